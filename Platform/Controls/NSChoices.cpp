// SPDX-License-Identifier: MIT
#include "Controls/NSChoices.h"

#include "Base/Failure.h"
#include "Controls/NSSegmentedControl.h"
#include "KeyValue/BindingValue.h"
#include "KeyValue/ChangeObserver.h"
#include "KeyValue/ControlBindings.h"
#include "KeyValue/KeyValueAccess.h"
#include "KeyValue/KeyValueCoding.h"
#include "KeyValue/KeyValueEquality.h"
#include "KeyValue/KeyValueObserving.h"

#include <QComboBox>
#include <QDynamicPropertyChangeEvent>
#include <QPointer>
#include <QScopeGuard>

#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

constexpr char selectedObject[] = "selectedObject";
constexpr char selectedTag[] = "selectedTag";

// A common interface to the controls that can offer choices.
class Offer
{
public:
    explicit Offer(QWidget *control)
        : m_box(qobject_cast<QComboBox *>(control))
        , m_segments(qobject_cast<NS::SegmentedControl *>(control))
    {
        if (!m_box && !m_segments)
            throw std::invalid_argument(
                    "choices are offered by a QComboBox or an NS::SegmentedControl");
    }

    int index() const { return m_box ? m_box->currentIndex() : m_segments->selectedSegment(); }
    void setIndex(int index) const
    {
        if (m_box)
            m_box->setCurrentIndex(index);
        else
            m_segments->setSelectedSegment(index);
    }
    void setTitles(const QStringList &titles) const
    {
        if (m_segments) {
            QStringList labels = titles;
            m_segments->setLabels(labels.replaceInStrings(u"&"_s, u"&&"_s)); // no shortcuts
            return;
        }
        while (m_box->count() > titles.size())
            m_box->removeItem(m_box->count() - 1);
        for (int i = 0; i < titles.size(); ++i) {
            if (i >= m_box->count())
                m_box->addItem(titles[i]);
            else if (m_box->itemText(i) != titles[i])
                m_box->setItemText(i, titles[i]);
        }
    }
    template <typename Slot>
    void whenSelected(QObject *context, Slot slot) const
    {
        if (m_box)
            QObject::connect(m_box, &QComboBox::currentIndexChanged, context, slot);
        else
            QObject::connect(m_segments, &NS::SegmentedControl::selectedSegmentChanged, context,
                             slot);
    }

private:
    QComboBox *m_box;
    NS::SegmentedControl *m_segments;
};

QVariant partOf(const QVariant &item, const QString &key)
{
    if (key.isEmpty())
        return item;
    if (const auto held = object(item))
        return *held ? NS::valueForKeyPath(*held, key) : QVariant();
    return valueInside(item, key, key);
}

// The choices of one control, its child.
class Choices : public QObject
{
public:
    Choices(QWidget *control, const NS::ObjectReference &model, const QString &keyPath,
            const NS::ChoiceKeys &keys)
        : m_control(control)
        , m_offer(control)
        , m_model(model)
        , m_keyPath(keyPath)
        , m_keys(keys)
        , m_list([this](const QVariant &items) { fill(items.toList()); })
    {
        requireOneThread(control, m_model.get(), m_keyPath);
        NS::addObserver(m_model.get(), &m_list, m_keyPath, NS::KeyValueObservingOptions::newValue);
        for (const char *const name : { selectedObject, selectedTag })
            control->setProperty(name, NS::nullObject());
        fill(NS::valueForKeyPath(m_model.get(), m_keyPath).toList());
        m_offer.whenSelected(this, [this] { selected(); });
        control->installEventFilter(this);
        setParent(control);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::DynamicPropertyChange || m_isSettled)
            return false;
        const QByteArray name = static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName();
        const QPointer guard(this);
        if (name == selectedObject || name == selectedTag)
            select(indexOf(m_control->property(name.constData()), name == selectedTag));
        return !guard; // a control that a slot has deleted gets no event
    }

private:
    // Until the guard goes, what changes follows from something else.
    auto settled()
    {
        const bool wasSettled = std::exchange(m_isSettled, true);
        return qScopeGuard([guard = QPointer(this), wasSettled] {
            if (guard)
                guard->m_isSettled = wasSettled;
        });
    }

    void fill(const QVariantList &items)
    {
        m_items = items;
        m_tags.clear();
        m_titles = std::make_unique<ChangeObserver>([this](const QVariant &) { retitle(); });
        m_lives = std::make_unique<QObject>();
        for (const QVariant &item : std::as_const(m_items)) {
            m_tags.append(partOf(item, m_keys.tag));
            const auto held = object(item);
            if (!held || !*held)
                continue;
            connect(*held, &QObject::destroyed, m_lives.get(),
                    [this](QObject *gone) { forget(gone); });
            if (!m_keys.title.isEmpty())
                NS::addObserver(*held, m_titles.get(), m_keys.title,
                                NS::KeyValueObservingOptions::newValue);
        }
        retitle();
    }

    // An item is destroyed. No property may lead to it.
    void forget(const QObject *gone)
    {
        const auto leave = settled();
        for (qsizetype i = m_items.size() - 1; i >= 0; --i) {
            if (object(m_items[i]) == gone) {
                m_items.removeAt(i);
                m_tags.removeAt(i);
            }
        }
        if (object(m_control->property(selectedObject)) == gone)
            ControlBindings::made(m_control).show(
                    nullptr, [this] { m_control->setProperty(selectedObject, NS::nullObject()); });
        retitle();
    }

    // Signals of the control about added and removed items are no choice of the user.
    void retitle()
    {
        const auto leave = settled();
        QStringList titles;
        for (const QVariant &item : std::as_const(m_items))
            titles.append(partOf(item, m_keys.title).toString());
        const QPointer guard(this);
        m_offer.setTitles(titles);
        if (!guard)
            return;
        m_offer.setIndex(
                indexOf(m_control->property(m_byTag ? selectedTag : selectedObject), m_byTag));
    }

    int indexOf(const QVariant &wanted, bool byTag)
    {
        m_byTag = byTag;
        const QVariantList &candidates = byTag ? m_tags : m_items;
        for (int i = 0; i < candidates.size(); ++i) {
            if (NS::isEqual(withoutNull(wanted), candidates[i]))
                return i;
        }
        return -1;
    }

    // One of the two properties was set: the control and the other property follow.
    void select(int index)
    {
        const auto leave = settled();
        const QPointer guard(this);
        const QVariant other = index < 0 ? NS::nullObject()
                               : m_byTag ? m_items[index]
                                         : m_tags[index];
        const char *const name = m_byTag ? selectedObject : selectedTag;
        m_offer.setIndex(index);
        if (guard)
            m_control->setProperty(name, other);
    }

    void selected()
    {
        if (m_isSettled)
            return;
        const auto leave = settled();
        const QPointer<QWidget> guard(m_control);
        const int index = m_offer.index();
        const bool isItem = index >= 0 && index < m_items.size();
        const QVariant item = isItem ? m_items[index] : NS::nullObject();
        const QVariant tag = isItem ? m_tags[index] : NS::nullObject();
        m_control->setProperty(selectedObject, item);
        if (guard)
            guard->setProperty(selectedTag, tag);
    }

    QWidget *m_control;
    Offer m_offer;
    NS::ObjectReference m_model;
    QString m_keyPath;
    NS::ChoiceKeys m_keys;
    QVariantList m_items;
    QVariantList m_tags;
    bool m_byTag = false; // which of the two properties was set last
    bool m_isSettled = false; // what changes now follows from something else
    ChangeObserver m_list;
    std::unique_ptr<ChangeObserver> m_titles;
    std::unique_ptr<QObject> m_lives; // the context of the connections to the items
};

} // namespace

} // namespace Pellarvine::detail

namespace NS {

void bindChoices(QWidget *control, const ObjectReference &observed, const QString &keyPath,
                 const ChoiceKeys &keys)
{
    static_cast<void>(detail::Offer(control)); // refuses another kind of control
    for (QObject *const child : control->children()) {
        if (dynamic_cast<detail::Choices *>(child)) {
            delete child;
            break;
        }
    }
    static_cast<void>(
            std::make_unique<detail::Choices>(control, observed, keyPath, keys).release());
}

} // namespace NS
