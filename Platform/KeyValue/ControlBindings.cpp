// SPDX-License-Identifier: MIT
#include "KeyValue/ControlBindings.h"

#include "Base/Failure.h"
#include "KeyValue/KeyValueCoding.h"

#include <QEvent>
#include <QPointer>
#include <QScopeGuard>

#include <algorithm>
#include <exception>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

ControlBindings *ControlBindings::of(const QObject *control)
{
    for (QObject *const child : control->children()) {
        if (auto *const bindings = dynamic_cast<ControlBindings *>(child))
            return bindings;
    }
    return nullptr;
}

ControlBindings &ControlBindings::made(QObject *control)
{
    ControlBindings *const bindings = of(control);
    return bindings ? *bindings : *new ControlBindings(control);
}

ControlBindings::ControlBindings(QObject *control)
    : QObject(control)
{ }

ControlBindings::~ControlBindings()
{
    const auto bindings = std::exchange(m_byName, {});
    for (const auto &[name, binding] : bindings)
        binding->end();
}

void ControlBindings::add(const QString &name, const std::shared_ptr<ControlBinding> &binding)
{
    const QPointer<ControlBindings> guard(this);
    remove(name);
    if (!guard)
        return;
    m_byName[name] = binding;
    try {
        binding->start();
    } catch (...) {
        if (guard)
            remove(name);
        throw;
    }
}

void ControlBindings::remove(const QString &name)
{
    const auto found = m_byName.find(name);
    if (found == m_byName.end())
        return;
    const std::shared_ptr<ControlBinding> binding = std::move(found->second);
    m_byName.erase(found);
    const QPointer<ControlBindings> guard(this);
    binding->end();
    if (guard)
        binding->unmark();
    if (guard)
        selectionChanged();
}

ControlBinding *ControlBindings::find(const QString &name) const
{
    const auto found = m_byName.find(name);
    return found == m_byName.end() ? nullptr : found->second.get();
}

bool ControlBindings::commit()
{
    const auto bindings = m_byName; // a copy, because any of them may end meanwhile
    bool isDone = true;
    for (const auto &[name, binding] : bindings)
        isDone = binding->commit() && isDone;
    return isDone;
}

void ControlBindings::show(const ControlBinding *binding, const std::function<void()> &write)
{
    const std::shared_ptr<int> showing = m_showing;
    const QPointer<ControlBindings> guard(this);
    {
        ++*showing;
        const auto leave = qScopeGuard([&showing] { --*showing; });
        write();
    }
    if (!guard || *showing > 0 || m_isRefreshing)
        return;
    m_isRefreshing = true;
    const auto leave = qScopeGuard([&guard] {
        if (guard)
            guard->m_isRefreshing = false;
    });
    const auto others = m_byName;
    for (const auto &[name, other] : others) {
        if (other.get() != binding)
            other->siblingShown();
    }
}

void ControlBindings::watchLocale()
{
    if (!std::exchange(m_watchesLocale, true))
        parent()->installEventFilter(this);
}

bool ControlBindings::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::LocaleChange)
        return false;
    const auto bindings = m_byName;
    for (const auto &[name, binding] : bindings) {
        try {
            binding->localeChanged();
        } catch (const std::exception &error) {
            printWarning(error);
        }
    }
    return false;
}

bool ControlBindings::keepEnabled(const QVariant &enabled)
{
    if (!m_enabled.isValid())
        return false;
    m_enabled = enabled.toBool();
    return true;
}

void ControlBindings::selectionChanged()
{
    QObject *const control = parent();
    if (!control->isWidgetType())
        return;
    const bool isLacking = std::any_of(m_byName.begin(), m_byName.end(), [](const auto &entry) {
        return entry.second->lacksSelection();
    });
    if (isLacking == m_enabled.isValid())
        return;
    if (isLacking)
        m_enabled = NS::valueForKeyPath(control, u"enabled"_s);
    NS::setValueForKeyPath(control, u"enabled"_s,
                           isLacking ? QVariant(false) : std::exchange(m_enabled, {}));
}

} // namespace Pellarvine::detail
