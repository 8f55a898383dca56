// SPDX-License-Identifier: MIT
#include "Base/Failure.h"
#include "KeyValue/BindingGroup.h"
#include "KeyValue/BindingValue.h"
#include "KeyValue/ControlBindings.h"
#include "KeyValue/KeyValueAccess.h"
#include "KeyValue/KeyValueCoding.h"
#include "KeyValue/KeyValueObserving.h"
#include "KeyValue/KeyValuePath.h"
#include "KeyValue/KeyValueSubscription.h"
#include "KeyValue/NSComputedBinding.h"
#include "KeyValue/NSKeyValueBinding.h"
#include "KeyValue/NumberText.h"

#include <QPointer>
#include <QScopeGuard>

#include <memory>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

class ComputedBinding final : public ControlBinding,
                              public std::enable_shared_from_this<ComputedBinding>,
                              private NS::KeyValueObserver,
                              private Listener
{
public:
    ComputedBinding(QObject *control, QString key, std::span<const NS::BindingSource> sources,
                    std::function<QVariant(const QVariantList &)> function,
                    Pellarvine::BindingGroup *group)
        : m_control(control)
        , m_key(std::move(key))
        , m_sources(sources.begin(), sources.end())
        , m_function(std::move(function))
        , m_group(group)
    { }

    void start() override
    {
        if (!findProperty(m_control, m_key, m_key).isWritable)
            throw NS::KeyValueException(NS::KeyValueException::readOnly,
                                        m_control->metaObject()->className(), m_key, m_key);
        for (const NS::BindingSource &source : m_sources) {
            QObject *const object = source.object.get();
            requireOneThread(m_control, object, source.keyPath);
            m_paths.push_back(Registration::add(object, this, source.keyPath,
                                                NS::KeyValueObservingOptions::newValue));
            m_destructions.push_back(Subscription::toDestruction(object, this));
        }
        show();
    }

    void end() override
    {
        m_hasEnded = true;
        if (m_group)
            m_group->forget(this);
    }
    void siblingShown() override
    {
        if (!m_hasEnded && m_control)
            put();
    }

    void localeChanged() override { siblingShown(); }

    QVariantMap info() const override
    {
        return { { NS::NSObservedObjectKey, QVariant::fromValue(m_sources.front().object.get()) },
                 { NS::NSObservedKeyPathKey, m_sources.front().keyPath } };
    }

private:
    void observeValue(const QString &, QObject *, const NS::KeyValueChange *) override
    {
        changed();
    }
    void fired(const Slot *) override { changed(); } // a source was destroyed

    void changed()
    {
        const auto later = [self = weak_from_this()] {
            if (const auto binding = self.lock())
                binding->show();
        };
        if (!m_group || !m_group->defer(this, later))
            show();
    }

    void show()
    {
        const auto self = shared_from_this();
        if (m_hasEnded || !m_control || m_hasStopped)
            return;
        if (m_depth == deepestExchange) {
            m_hasStopped = true;
            printWarning("Warning: the computed binding of "
                         + std::string(m_control->metaObject()->className()) + '.'
                         + m_key.toStdString() + " does not settle");
            return;
        }
        ++m_depth;
        const auto leave = qScopeGuard([this] {
            if (--m_depth == 0)
                m_hasStopped = false;
        });
        const int pass = ++m_passes;
        QVariantList values;
        for (Registration *const path : m_paths)
            values.append(path->value());
        const QVariant value = m_function(values);
        // If the function has changed a source, the control shows the later value already.
        if (m_hasEnded || !m_control || pass != m_passes)
            return;
        m_value = value;
        put();
    }

    void put()
    {
        ControlBindings &siblings = ControlBindings::made(m_control);
        QVariant display = m_value;
        if (isWrittenAsNumber(m_value.metaType()) && showsNumbersAsText(m_control, m_key)) {
            siblings.watchLocale();
            display = numberText(m_value, controlLocale(m_control));
        }
        if ((m_key == "enabled"_L1 && siblings.keepEnabled(display))
            || holdsAlready(NS::valueForKeyPath(m_control, m_key), display))
            return;
        siblings.show(this, [&] { NS::setValueForKeyPath(m_control, m_key, display); });
    }

    QPointer<QObject> m_control;
    QString m_key;
    std::vector<NS::BindingSource> m_sources;
    std::vector<Registration *> m_paths; // to the sources; the base class owns them
    std::vector<Subscription> m_destructions; // of the sources
    std::function<QVariant(const QVariantList &)> m_function;
    QPointer<Pellarvine::BindingGroup> m_group;
    QVariant m_value; // the last result of the function
    int m_depth = 0; // the number of nested passes
    int m_passes = 0; // counted to notice a later one
    bool m_hasStopped = false; // it does not settle; until the outermost pass returns
    bool m_hasEnded = false;
};

} // namespace

void bindComputed(QObject *object, const QString &binding,
                  std::span<const NS::BindingSource> sources,
                  std::function<QVariant(const QVariantList &)> function, BindingGroup *group)
{
    ControlBindings::made(object).add(
            binding, std::make_shared<ComputedBinding>(object, boundProperty(object, binding),
                                                       sources, std::move(function), group));
}

} // namespace Pellarvine::detail
