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

/// A widget, whose aligned part has variables in a LayoutSystem, or a guide.
struct LayoutItem
{
    /// Items with lower numbers keep their size rather than others.
    LayoutItem(NS::ConstraintItem item, int number, ConstraintSolver &solver);

    QObject *object;
    QWidget *widget; ///< null for a guide
    NS::LayoutGuide *guide; ///< null for a widget
    /// The widget, or the view that owns the guide.
    QWidget *view() const { return widget ? widget : guide->owningView(); }

    bool isGiven = false; ///< placed by somebody else
    bool hasHeightForWidth = false;
    double minimumHeight = 0.0;
    QMarginsF insets; ///< how far inside the widget lies what is aligned
    LayoutAxis x;
    LayoutAxis y;

    // The engine's own.
    int uses = 0; ///< by constraints
    int placings = 0; ///< by constraints that may move it
    QMetaObject::Connection ending; ///< of the object, which may come before its constraints'
};

/// The equations behind one host: its size, the items in it and what they want, and the constraints
/// between all these. Answers where the items are in a host of a given size, and which sizes fit.
///
/// y grows downwards and the origin is the host's upper left, as constants grow.
class LayoutSystem
{
public:
    using Solver = ConstraintSolver;

    Solver &solver() { return m_solver; }

    /// Null for the host and for what no constraint is about.
    LayoutItem *find(const QObject *object) const;
    /// The last one in order. Before sizes are asked for, the caller gives it a frame or wishes.
    LayoutItem &add(NS::ConstraintItem item);
    /// Gives all items another order: what is left open, or wanted equally, goes by it.
    void setOrder(const std::vector<LayoutItem *> &items);
    /// No constraint may be about it any more.
    void remove(LayoutItem &item);
    /// How often an item has come or gone.
    unsigned changes() const { return m_changes; }
    /// Parents first.
    const std::vector<LayoutItem *> &items() const { return m_order; }

    /// The item stays at that frame, in the host's coordinates.
    void setFrame(LayoutItem &item, const QRectF &frame);
    /// Takes over what the widget wants, on request without its size hints. A guide wants nothing.
    void setIntrinsicSize(LayoutItem &item, bool hasHints);

    /// How far inside the host its anchors are. Returns whether that is new; the constraints then
    /// have to be added again.
    bool setHostInsets(const QMarginsF &insets);

    /// What a constraint between the host and items says. Leading and trailing follow the direction
    /// of `ancestor`, the nearest common ancestor of its two widgets.
    Solver::Expression expressionOf(const NS::LayoutConstraint &constraint,
                                    const QWidget *ancestor) const;
    /// Adds a constraint that says `expression`.
    Solver::Addition add(const NS::LayoutConstraint &constraint,
                         const Solver::Expression &expression);

    void solve(const QSize &hostSize);
    /// Where solve() has put the widget or guide, in the host.
    QRect place(const LayoutItem &item) const;

    /// After solve(), whether a given item is at its frame: required constraints go first.
    bool isWhereGiven(const LayoutItem &item) const;
    /// After solve(), whether the host has the size that solve() was told.
    bool isHostOfSize(const QSize &size) const;

    /// A width or a height that required constraints make negative.
    struct NegativeSize
    {
        Qt::Orientation orientation;
        std::vector<Solver::Constraint> constraints;
    };
    /// Those of items and of the host, after solve().
    std::vector<NegativeSize> negativeSizes();

    /// Whether constraints and wishes leave the item one place, after solve().
    bool isDetermined(const LayoutItem &item) const;
    /// After solve(), puts the item somewhere else, as far as constraints and wishes leave that
    /// open. The next solve() puts it back.
    void moveElsewhere(const LayoutItem &item);
    /// The constraints on which its place and size in that direction depend, after solve().
    std::vector<Solver::Constraint> determining(const LayoutItem &item,
                                                Qt::Orientation orientation) const;

    // Sizes of the host, in whole units.
    QSize smallestSize();
    QSize preferredSize();
    QSize largestSize(); ///< QLAYOUTSIZE_MAX where there is no limit
    /// The height at `width` of a host that `level` keeps small.
    int fittingHeight(int width, double level);
    bool hasHeightForWidth() const;

private:
    AnchorAxis xAxisOf(const QWidget *widget) const;
    Anchor anchorOf(NS::ConstraintItem item, NS::LayoutAttribute attribute) const;
    std::vector<Solver::Variable> openVariables(const LayoutItem &item) const;
    void solveWidthsFirst();
    QSize hostSize(int (*rounded)(double)) const;

    // One direction of the host: what the solver is told to want of it just now.
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
