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

/// Keeps the active constraints between one widget, the host, and what is below it, and places the
/// constrained widgets and guides accordingly. It runs as the host's QLayout where the host has no other one,
/// else beside that, without reporting sizes.
///
/// A widget is placed by one engine. Where constraints reach into what another engine below places,
/// the upper engine takes over all of the lower one's, unless a Qt layout lies between the two:
/// then it takes what the lower one places as given.
class LayoutEngine : public QObject
{
public:
    /// The engine for constraints whose nearest common ancestor is `host`: its own, made if there
    /// is none, or the one that has taken over.
    static LayoutEngine *on(QWidget *host);

    explicit LayoutEngine(QWidget *host);
    ~LayoutEngine() override;

    /// Warns and leaves the constraint inactive if it contradicts those there are. `ancestor` is
    /// its nearest common ancestor, which it does not move.
    void add(const std::shared_ptr<NS::LayoutConstraint> &constraint, QWidget *ancestor);
    void remove(NS::LayoutConstraint *constraint);
    void updateConstant(NS::LayoutConstraint *constraint);
    void updateStrength(NS::LayoutConstraint *constraint);

    /// The active ones, in the order in which they came.
    std::vector<std::shared_ptr<NS::LayoutConstraint>> constraints() const;

    /// The engine that decides where the widget is, or null.
    static LayoutEngine *placing(const QWidget *widget);
    /// Whether the constraints leave a widget that the engine places one place.
    bool isDetermined(const QWidget *widget);
    /// Moves a widget that the engine places and whose place is open elsewhere, or back.
    void exercise(const QWidget *widget);
    /// The constraints on which its place and size in that direction depend, in order.
    std::vector<std::shared_ptr<NS::LayoutConstraint>> affecting(const QWidget *widget,
                                                                 Qt::Orientation orientation);

    // What the QLayout answers with; sizes are without the host's margins, which Qt adds.
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
        QObject *first = nullptr; ///< may be on its way out
        QObject *second = nullptr;
        QWidget *ancestor = nullptr;
        std::optional<Solver::Constraint> handle; ///< none while it is out of the solver
        int number = 0;
        bool isOfBaseline = false;
        bool isReported = false; ///< by a warning
        std::vector<Solver::Term> terms; ///< of one of a baseline, in the solver
    };

    std::vector<const Active *> inOrder(bool ofBaselines = false) const;
    std::vector<Active> copiesInOrder() const;
    void removeAll(const std::vector<std::shared_ptr<NS::LayoutConstraint>> &constraints);
    void takeOut(Active &active);
    bool addAgain(Active &active);
    bool addAgain(Active &active, Solver::Expression expression);
    bool updateBaseline(Active &active);

    std::vector<const Active *> activeOf(const std::vector<Solver::Constraint> &handles) const;
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
    int m_nextNumber = 0;
    bool m_isOrderStale = false; // constraints have gone, by which items came
    bool m_hasNewConstraints = false; // of which nobody knows yet whether a size may satisfy them
    bool m_isLookDue = false; // for overridden constraints
    bool m_isStale = false; // what the widgets ask for may have changed
    QObject *m_placing = nullptr; // the widget or guide that apply() is placing
    std::optional<QSize> m_minimumSize;
    std::optional<QSize> m_sizeHint;
    std::optional<QSize> m_maximumSize;
    QHash<int, int> m_heights; // by width
    QHash<int, int> m_minimumHeights;
};

} // namespace Pellarvine::detail
