// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/LayoutSystem.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QSize>

QT_FORWARD_DECLARE_CLASS(QLayout)

namespace Pellarvine::detail {

/// Keeps the active constraints between one widget, the host, and its descendants, and places the
/// constrained widgets and guides. It is the QLayout of the host if that has no other one. If it
/// has, the engine works beside it and reports no sizes.
///
/// One engine places a widget. If a constraint mentions a widget that an engine below places, the
/// upper engine takes over all constraints of the lower one. If a Qt layout lies between the two,
/// it does not: the frames that the lower engine sets are given to the upper one.
class LayoutEngine : public QObject
{
public:
    /// The engine for constraints whose nearest common ancestor is `host`: that of the host, made
    /// if there is none, or the one that has taken over.
    static LayoutEngine *on(QWidget *host);

    explicit LayoutEngine(QWidget *host);
    ~LayoutEngine() override;

    /// If the constraint contradicts active ones, warns and leaves it inactive. `ancestor` is the
    /// nearest common ancestor of its items, which it does not move.
    void add(const std::shared_ptr<NS::LayoutConstraint> &constraint, QWidget *ancestor);
    void remove(NS::LayoutConstraint *constraint);
    void updateConstant(NS::LayoutConstraint *constraint);
    void updateStrength(NS::LayoutConstraint *constraint);

    /// The active constraints, in the order of activation.
    std::vector<std::shared_ptr<NS::LayoutConstraint>> constraints() const;

    /// The engine that places the widget, or null.
    static LayoutEngine *placing(const QWidget *widget);
    /// Whether constraints determine the frame of a widget that the engine places.
    bool isDetermined(const QWidget *widget);
    /// Moves a widget whose frame is ambiguous to another place, or back. The engine places it.
    void exercise(const QWidget *widget);
    /// The constraints that determine its place and size in that direction, in order.
    std::vector<std::shared_ptr<NS::LayoutConstraint>> affecting(const QWidget *widget,
                                                                 Qt::Orientation orientation);

    // For the QLayout. Sizes exclude the contents margins of the host, which Qt adds.
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

    struct Active
    {
        std::shared_ptr<NS::LayoutConstraint> constraint;
        QObject *first = nullptr; ///< may be half destroyed
        QObject *second = nullptr;
        QWidget *ancestor = nullptr;
        std::optional<Solver::Constraint> handle; ///< none while it is not in the solver
        int number = 0;
        bool isOfBaseline = false;
        bool isOfBothSizes = false; ///< ties a width to a height
        bool isReported = false; ///< a warning has named it
        std::vector<Solver::Term> terms; ///< of a constraint of a baseline, as in the solver
    };

    Active strike(NS::LayoutConstraint *constraint);
    std::vector<Active> copiesInOrder() const;
    void removeAll(const std::vector<std::shared_ptr<NS::LayoutConstraint>> &constraints);
    void takeOut(Active &active);
    bool addAgain(Active &active);
    bool addAgain(Active &active, const Solver::Expression &expression);
    bool updateBaseline(Active &active);

    std::vector<Active *> activeOf(const std::vector<Solver::Constraint> &handles) const;
    void warnAbout(const NS::LayoutConstraint &constraint,
                   const std::vector<Solver::Constraint> &conflict) const;
    void warnOfNegativeSizes();
    QSet<const QWidget *> overriddenWidgets() const;
    void lookForOverridden();
    void warnOfOverridden();

    void acquire(NS::ConstraintItem item, const QWidget *ancestor);
    void release(QObject *object, const QWidget *ancestor);
    void watch(QWidget *view);
    void unwatch(QObject *object);
    void drop(const QSet<QObject *> &objects, bool areAlive);
    void dropStrayed();
    bool isGiven(const LayoutItem &item) const;
    bool placesBelow(const QWidget *widget) const;
    void takeOver(QWidget *host);
    void takeOverAllOf(LayoutEngine *lower);

    bool placeItems();

    void request();
    void reorder();
    void refresh();
    void refresh(LayoutItem &item);
    void rebuild();
    QSize withoutMargins(const QSize &size) const;
    int fittingHeight(int width, double level);

    QWidget *m_host;
    QLayout *m_layout = nullptr;
    LayoutSystem m_system;
    std::unordered_map<NS::LayoutConstraint *, Active> m_active;
    std::vector<Active *> m_inOrder; // the same, in the order of activation
    int m_nextNumber = 0;
    int m_tiesOfSizes = 0; // the number of those between a width and a height
    bool m_isOrderStale = false; // constraints have ended, which decided the order of items
    bool m_hasNewConstraints = false; // not yet searched for negative sizes
    bool m_isLookDue = false; // a search for overridden constraints is scheduled
    bool m_isStale = false; // the size hints of widgets may have changed
    QObject *m_placing = nullptr; // the widget or guide that apply() is placing
    std::optional<QSize> m_minimumSize;
    std::optional<QSize> m_sizeHint;
    std::optional<QSize> m_maximumSize;
    QHash<int, int> m_heights; // by width
    QHash<int, int> m_minimumHeights;
};

} // namespace Pellarvine::detail
