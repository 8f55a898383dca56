// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/NSLayoutConstraint.h"
#include "Layout/Solver/ConstraintSolver.h"

#include <QHash>
#include <QMarginsF>
#include <QObject>
#include <QSet>
#include <QSize>

#include <map>
#include <unordered_map>

QT_FORWARD_DECLARE_CLASS(QLayout)

namespace Pellarvine::detail {

/// Keeps the active constraints between one widget, the host, and what is below it, and places the
/// constrained widgets accordingly. It runs as the host's QLayout where the host has no other one,
/// else beside that, without reporting sizes.
///
/// A widget is placed by one engine. Where constraints reach into what another engine below places,
/// the upper engine takes over all of the lower one's, unless a Qt layout lies between the two: then
/// it takes what the lower one places as given.
///
/// Inside, y grows downwards and the origin is the host's upper left, as constants grow.
class LayoutEngine : public QObject
{
public:
    /// The engine for constraints whose nearest common ancestor is `host`: its own, made if there
    /// is none, or the one that has taken over.
    static LayoutEngine *on(QWidget *host);

    /// Whether an engine there is, or would be, the host's QLayout.
    static bool canReport(const QWidget *host);

    explicit LayoutEngine(QWidget *host);
    ~LayoutEngine() override;

    /// Warns and leaves the constraint inactive if it contradicts those there are. `ancestor` is its
    /// nearest common ancestor, which it does not move.
    void add(const std::shared_ptr<NS::LayoutConstraint> &constraint, QWidget *ancestor);
    void remove(NS::LayoutConstraint *constraint);
    void updateConstant(NS::LayoutConstraint *constraint);
    void updateStrength(NS::LayoutConstraint *constraint);

    // What the QLayout answers with; sizes include the host's margins.
    void invalidate();
    void apply();
    QSize minimumSize();
    QSize sizeHint();
    QSize maximumSize();
    bool hasHeightForWidth();
    int heightForWidth(int width);
    int minimumHeightForWidth(int width);
    Qt::Orientations expandingDirections() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using Solver = ConstraintSolver;

    /// The length that a widget wants in one direction, and how much.
    struct Wish
    {
        double target = 0.0;
        double lower = -1.0; ///< below 0: no limit of its own
        double upper = -1.0;
        double notBelow = 0.0; ///< levels
        double notAbove = 0.0;
        double lowerLevel = 0.0;
        bool operator==(const Wish &) const = default;
    };

    struct Axis
    {
        Solver::Variable origin {};
        Solver::Variable extent {};
        Wish wish;
        std::optional<Solver::Constraint> target;
        std::optional<Solver::Constraint> lower;
        std::optional<Solver::Constraint> upper;
        std::optional<Solver::Constraint> place; ///< of the origin, if the frame is given
    };

    struct Item
    {
        QWidget *widget = nullptr;
        int number = 0; ///< earlier items keep their size rather than later ones
        int uses = 0; ///< by constraints
        int placings = 0; ///< by constraints that may move it
        bool isGiven = false; ///< placed by somebody else
        bool hasHeightForWidth = false;
        double minimumHeight = 0.0;
        QMarginsF insets;
        QMetaObject::Connection ending; ///< of the widget, which may come before its constraints'
        Axis x;
        Axis y;
    };

    struct Active
    {
        std::shared_ptr<NS::LayoutConstraint> constraint;
        QWidget *first = nullptr; ///< may be on its way out
        QWidget *second = nullptr;
        QWidget *ancestor = nullptr;
        Solver::Constraint handle {};
        int number = 0;
    };

    static Wish wishOf(const QWidget *widget, Qt::Orientation orientation, double insets,
                       double heightForWidth, bool canHint);
    void setWish(Item &item, Axis &axis, const Wish &wish);
    void setPlace(Axis &axis, std::optional<double> origin);
    void acquire(QWidget *widget, const QWidget *ancestor);
    void release(QWidget *widget, const QWidget *ancestor);
    static bool isReachable(const QWidget *from, const QWidget *ancestor);
    bool placesBelow(const QWidget *widget) const;
    void replace(QWidget *host);
    void takeOver(LayoutEngine *lower);
    void drop(const QSet<QWidget *> &widgets, bool areAlive);
    void dropStrayed();
    void watch(QWidget *widget);
    bool isGiven(const Item &item) const;
    QRectF givenRect(const QWidget *widget) const;

    Solver::Expression expressionOf(const NS::LayoutConstraint &constraint) const;
    void addEdge(Solver::Expression &expression, QWidget *widget, NS::LayoutAttribute attribute,
                 double factor, bool isMirrored) const;
    Solver::Addition addToSolver(const NS::LayoutConstraint &constraint);
    void warnAbout(const NS::LayoutConstraint &constraint,
                   const std::vector<Solver::Constraint> &conflict) const;
    std::vector<Active> inOrder() const;

    void request();
    void refresh();
    void refresh(Item &item);
    void refreshHostInsets();
    void rebuild();
    void solveWidthsFirst(Solver &solver);
    enum class Fitting {
        smallest,
        preferred,
    };
    QSize fittingSize(double level, Fitting fitting);
    int fittingHeight(int width, double level);

    QWidget *m_host;
    QLayout *m_layout = nullptr;
    Solver m_solver;
    Solver::Variable m_width {};
    Solver::Variable m_height {};
    Solver::Constraint m_hostWidth {};
    Solver::Constraint m_hostHeight {};
    QMarginsF m_hostInsets; // its anchors are those of what lies within
    std::unordered_map<NS::LayoutConstraint *, Active> m_active;
    std::unordered_map<QWidget *, std::unique_ptr<Item>> m_items;
    std::vector<Item *> m_order; // parents first
    int m_nextNumber = 0;
    bool m_isRightToLeft = false;
    bool m_isStale = false; // what the widgets ask for may have changed
    bool m_isApplying = false;
    std::optional<QSize> m_minimumSize;
    std::optional<QSize> m_sizeHint;
    std::optional<QSize> m_maximumSize;
    QHash<int, int> m_heights; // by width
    QHash<int, int> m_minimumHeights;
};

} // namespace Pellarvine::detail
