// SPDX-License-Identifier: MIT
#include "KeyValue/ChangeSignal.h"

#include "KeyValue/KeyValueObserving.h"

#include <QByteArray>
#include <QHash>
#include <QMetaObject>

#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// By name, so that this library needs no widget classes.
class ChangeSignals
{
public:
    static ChangeSignals &shared()
    {
        // Never destroyed: an observer in a static variable may need it when the process exits.
        static auto *const signalTable = new ChangeSignals;
        return *signalTable;
    }

    void add(const QByteArray &className, const QByteArray &property, const QByteArray &signal)
    {
        const std::lock_guard lock(m_mutex);
        m_signals.insert({ className, property }, signal);
    }

    QByteArray find(const QByteArray &className, const QByteArray &property) const
    {
        const std::lock_guard lock(m_mutex);
        return m_signals.value({ className, property });
    }

private:
    mutable std::mutex m_mutex;
    // Properties of Qt's editors that are declared without NOTIFY.
    QHash<std::pair<QByteArray, QByteArray>, QByteArray> m_signals {
        { { "QTextEdit", "plainText" }, "textChanged()" },
        { { "QTextEdit", "html" }, "textChanged()" },
        { { "QTextEdit", "markdown" }, "textChanged()" },
        { { "QTextBrowser", "source" }, "sourceChanged(QUrl)" },
        { { "QCalendarWidget", "selectedDate" }, "selectionChanged()" },
        { { "QLineEdit", "cursorPosition" }, "cursorPositionChanged(int,int)" },
        { { "QAbstractSlider", "minimum" }, "rangeChanged(int,int)" },
        { { "QAbstractSlider", "maximum" }, "rangeChanged(int,int)" },
        { { "QDockWidget", "floating" }, "topLevelChanged(bool)" },
        { { "QDockWidget", "windowTitle" }, "windowTitleChanged(QString)" },
    };
};

} // namespace

int changeSignal(const QMetaObject *metaObject, const QMetaProperty &property)
{
    if (property.hasNotifySignal())
        return property.notifySignalIndex();
    for (const QMetaObject *type = metaObject; type; type = type->superClass()) {
        const QByteArray signal = ChangeSignals::shared().find(type->className(), property.name());
        if (!signal.isEmpty())
            return metaObject->indexOfSignal(signal.constData());
    }
    return -1;
}

} // namespace Pellarvine::detail

namespace NS {

void registerChangeSignal(const QMetaObject &metaObject, const QByteArray &property,
                          const QByteArray &signal)
{
    const QByteArray signature = QMetaObject::normalizedSignature(signal.constData());
    const bool hasProperty = metaObject.indexOfProperty(property.constData()) >= 0;
    if (!hasProperty || metaObject.indexOfSignal(signature.constData()) < 0) {
        const QString key = QString::fromUtf8(property);
        throw KeyValueException(
                hasProperty ? KeyValueException::notObservable : KeyValueException::undefinedKey,
                metaObject.className(), key, key,
                hasProperty ? u"there is no signal "_s + QString::fromUtf8(signature) : QString());
    }
    detail::ChangeSignals::shared().add(metaObject.className(), property, signature);
}

} // namespace NS
