// SPDX-License-Identifier: MIT
#include "Shared/Settings.h"

#include "Base/Failure.h"
#include "KeyValue/KeyValueCoding.h"
#include "KeyValue/KeyValueEquality.h"
#include "KeyValue/NSKeyValueBinding.h"

#include <QDynamicPropertyChangeEvent>
#include <QFileInfo>
#include <QFileSystemWatcher>

#include <string>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine {

struct Settings::Private
{
    Settings *q = nullptr;
    std::unique_ptr<QSettings> storage;
    QString group;
    QVariantMap defaults;
    QVariantMap stored; // what the properties are like in the storage
    QFileSystemWatcher watcher;
    bool appliesAtOnce = false;
    bool isModified = false;
    bool isAllDefault = true;
    int batch = 0; // of changes that are told of once

    QVariant current(const QString &key) const { return q->property(key.toUtf8().constData()); }
    void set(const QString &key, const QVariant &value) const
    {
        NS::setValueForKeyPath(q, key, value);
    }
    bool isAll(const QVariantMap &values) const
    {
        for (auto it = values.begin(); it != values.end(); ++it) {
            if (!NS::isEqual(current(it.key()), it.value()))
                return false;
        }
        return true;
    }

    void setAll(const QVariantMap &values)
    {
        ++batch;
        for (auto it = values.begin(); it != values.end(); ++it)
            set(it.key(), it.value());
        --batch;
        changed();
    }

    QString path(const QString &key) const { return group.isEmpty() ? key : group + u'/' + key; }

    // The default for what is missing or of another type.
    QVariant read(const QString &key)
    {
        QVariant byDefault = defaults.value(key);
        if (!storage->contains(path(key)))
            return byDefault;
        const QVariant value = storage->value(path(key));
        QObject reader; // converts as key-value coding does
        reader.setProperty("keepsPropertyTypes", true);
        reader.setProperty("value", byDefault);
        try {
            NS::setValueForKeyPath(&reader, u"value"_s, value);
        } catch (const NS::KeyValueException &) {
            detail::printWarning("Warning: the setting " + path(key).toStdString() + " in "
                                 + storage->fileName().toStdString() + " is no "
                                 + byDefault.typeName() + "; its default is used");
            return byDefault;
        }
        return reader.property("value");
    }

    void watch()
    {
        // Saving replaces the file, which only a watch of its folder detects.
        const QString file = storage->fileName();
        for (const QString &path : { file, QFileInfo(file).path() }) {
            if (QFileInfo::exists(path))
                watcher.addPath(path);
        }
    }

    void follow()
    {
        watch();
        storage->sync();
        ++batch;
        for (const QString &key : defaults.keys()) {
            const bool isEdited = !NS::isEqual(current(key), stored.value(key));
            stored[key] = read(key);
            if (!isEdited)
                set(key, stored.value(key));
        }
        --batch;
        changed();
    }

    void changed()
    {
        if (batch > 0)
            return;
        if (appliesAtOnce && !isAll(stored))
            q->apply();
        const bool wasModified = std::exchange(isModified, !isAll(stored));
        const bool wasAllDefault = std::exchange(isAllDefault, isAll(defaults));
        if (wasModified != isModified)
            Q_EMIT q->modifiedChanged(isModified);
        if (wasAllDefault != isAllDefault)
            Q_EMIT q->allDefaultChanged(isAllDefault);
    }
};

Settings::Settings(const QString &group, const QVariantMap &defaults, QObject *parent)
    : Settings(std::make_unique<QSettings>(), group, defaults, parent)
{ }

Settings::Settings(std::unique_ptr<QSettings> storage, const QString &group,
                   const QVariantMap &defaults, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->q = this;
    d->storage = std::move(storage);
    d->group = group;
    d->defaults = defaults;
    ++d->batch;
    for (auto it = defaults.begin(); it != defaults.end(); ++it) {
        d->stored[it.key()] = d->read(it.key());
        setProperty(it.key().toUtf8().constData(), d->stored.value(it.key()));
    }
    --d->batch;
    d->isAllDefault = d->isAll(defaults);
    d->watch();
    connect(&d->watcher, &QFileSystemWatcher::fileChanged, this, [this] { d->follow(); });
    connect(&d->watcher, &QFileSystemWatcher::directoryChanged, this, [this] { d->follow(); });
}

Settings::~Settings() = default;

bool Settings::isModified() const
{
    return d->isModified;
}

bool Settings::isAllDefault() const
{
    return d->isAllDefault;
}

bool Settings::appliesAtOnce() const
{
    return d->appliesAtOnce;
}

void Settings::setAppliesAtOnce(bool appliesAtOnce)
{
    if (std::exchange(d->appliesAtOnce, appliesAtOnce) == appliesAtOnce)
        return;
    d->changed();
    Q_EMIT appliesAtOnceChanged(appliesAtOnce);
}

void Settings::bindChildren(QObject *root)
{
    const QList<QObject *> descendants = root->findChildren<QObject *>();
    for (QObject *const child : descendants) {
        const QVariant setting = child->property("setting");
        if (setting.typeId() == QMetaType::QString)
            NS::bind(child, NS::NSValueBinding, this, setting.toString());
    }
}

bool Settings::event(QEvent *event)
{
    if (event->type() == QEvent::DynamicPropertyChange) {
        const auto *const change = static_cast<QDynamicPropertyChangeEvent *>(event);
        if (d->defaults.contains(QString::fromUtf8(change->propertyName())))
            d->changed();
    }
    return QObject::event(event);
}

bool Settings::apply()
{
    for (auto it = d->defaults.cbegin(); it != d->defaults.cend(); ++it) {
        const QString &key = it.key();
        const QVariant value = d->current(key);
        if (NS::isEqual(value, d->stored.value(key)))
            continue;
        if (NS::isEqual(value, it.value()))
            d->storage->remove(d->path(key));
        else
            d->storage->setValue(d->path(key), value);
    }
    d->storage->sync();
    if (d->storage->status() != QSettings::NoError) {
        detail::printWarning("Warning: the settings cannot be written to "
                             + d->storage->fileName().toStdString());
        return false;
    }
    for (auto it = d->defaults.cbegin(); it != d->defaults.cend(); ++it)
        d->stored[it.key()] = d->current(it.key());
    d->watch();
    if (std::exchange(d->isModified, false))
        Q_EMIT modifiedChanged(false);
    Q_EMIT applied();
    return true;
}

void Settings::reset()
{
    d->setAll(d->stored);
}

void Settings::restoreDefaults()
{
    d->setAll(d->defaults);
}

} // namespace Pellarvine
