// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/LayoutAxis.h"
#include "Layout/NSLayoutConstraint.h"

#include <QMarginsF>
#include <QObject>
#include <QRect>

#include <unordered_map>

namespace Pellarvine::detail {

struct Anchor;
struct AnchorAxis;

/// A widget or a guide with variables in a LayoutSystem: those of its aligned part.
struct LayoutItem
{
    /// Of items that compete, the one with the lowest number keeps its size.
    LayoutItem(NS::ConstraintItem item, int number, ConstraintSolver &solver);

    /// The widget, or the view that owns the guide.
    QWidget *view() const { return widget ? widget : guide->owningView(); }

    QObject *object;
    QWidget *widget; ///< null for a guide
    NS::LayoutGuide *guide; ///< null for a widget
    bool isGiven = false; ///< another layout, or the program, places it
    bool hasHeightForWidth = false;
    double minimumHeight = 0.0;
    QMarginsF insets; ///< from the widget to its aligned part
    LayoutAxis x;
    LayoutAxis y;

    // For the engine.
    int uses = 0; ///< the number of its constraints
    int placings = 0; ///< the number of those that may move it
    QMetaObject::Connection ending; ///< to the object's `destroyed`
};

/// The equations of one host: its size, its items with their intrinsic sizes, and the constraints
/// between these. Computes the frames of the items in a host of a given size, and the minimum,
/// preferred and maximum size of the host.
///
/// The origin is the upper left of the host, and y grows downwards, as the constants do.
class LayoutSystem
{
public:
    using Solver = ConstraintSolver;

    Solver &solver() { return m_solver; }

    /// Null for the host and for objects without constraints.
    LayoutItem *find(const QObject *object) const;
    /// Adds it as the last one in order. The caller then calls setFrame() or setIntrinsicSize().
    LayoutItem &add(NS::ConstraintItem item);
    /// Gives all items another order, which decides what constraints leave open, and who of equals
    /// goes first.
    void setOrder(const std::vector<LayoutItem *> &items);
    /// No constraint may mention it any more.
    void remove(LayoutItem &item);
    /// How often items were added or removed.
    unsigned changes() const { return m_changes; }
    /// All items, parents first.
    const std::vector<LayoutItem *> &items() const { return m_order; }

    /// Makes the item given, at that frame in the coordinates of the host.
    void setFrame(LayoutItem &item, const QRectF &frame);
    /// Makes the item one to place, with the size hints and limits of its widget. A guide, or a
    /// widget for which `hasHints` is false, has no size hints.
    void setIntrinsicSize(LayoutItem &item, bool hasHints);

    /// Sets the alignment insets of the host. Returns whether they have changed: the caller then
    /// adds the constraints again.
    bool setHostInsets(const QMarginsF &insets);

    /// The expression of a constraint between the host and items. Leading and trailing follow the
    /// direction of `ancestor`, the nearest common ancestor of its two items.
    Solver::Expression expressionOf(const NS::LayoutConstraint &constraint,
                                    const QWidget *ancestor) const;
    /// Adds a constraint that compares `expression` with 0.
    Solver::Addition add(const NS::LayoutConstraint &constraint,
                         const Solver::Expression &expression);

    void solve(const QSize &hostSize);
    /// After solve(), the frame of the item in the host.
    QRect place(const LayoutItem &item) const;

    /// After solve(), whether a given item is at its frame. Required constraints may prevent that.
    bool isWhereGiven(const LayoutItem &item) const;
    /// After solve() with that size, whether the host has it.
    bool isHostOfSize(const QSize &size) const;

    /// A width or a height that required constraints make negative.
    struct NegativeSize
    {
        Qt::Orientation orientation;
        std::vector<Solver::Constraint> constraints;
    };
    /// After solve(), those of the items and the host.
    std::vector<NegativeSize> negativeSizes();

    /// After solve(), whether constraints and size hints determine the frame of the item.
    bool isDetermined(const LayoutItem &item) const;
    /// After solve(), moves the item to another place that satisfies the constraints as well, if
    /// there is one. The next solve() moves it back.
    void moveElsewhere(const LayoutItem &item);
    /// After solve(), the constraints that determine its place and size in that direction.
    std::vector<Solver::Constraint> determining(const LayoutItem &item,
                                                Qt::Orientation orientation) const;

    // Sizes of the host, in whole units.
    QSize smallestSize();
    QSize preferredSize();
    QSize largestSize(); ///< QLAYOUTSIZE_MAX where there is no limit
    /// The least height of a host of that width, of constraints above `level`.
    int fittingHeight(int width, double level);
    bool hasHeightForWidth() const;

private:
    AnchorAxis xAxisOf(const QWidget *widget) const;
    Anchor anchorOf(NS::ConstraintItem item, NS::LayoutAttribute attribute) const;
    std::vector<Solver::Variable> openVariables(const LayoutItem &item) const;
    void solveWidthsFirst();
    QSize hostSize(int (*rounded)(double)) const;

    // One direction of the host, with a suggested length, which depends on the question.
    class HostAxis
    {
    public:
        explicit HostAxis(Solver &solver);
        Solver::Variable extent() const { return m_extent; }
        void suggest(Solver &solver, double level, double length);

    private:
        Solver::Variable m_extent;
        Solver::Constraint m_suggestion;
        double m_level;
    };

    Solver m_solver;
    HostAxis m_width { m_solver };
    HostAxis m_height { m_solver };
    QMarginsF m_hostInsets;
    std::unordered_map<const QObject *, std::unique_ptr<LayoutItem>> m_items;
    std::vector<LayoutItem *> m_order;
    unsigned m_changes = 0;
};

} // namespace Pellarvine::detail
