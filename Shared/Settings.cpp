// SPDX-License-Identifier: MIT
#include "Shared/Settings.h"

#include "Base/Failure.h"
#include "KeyValue/ControlBindings.h"
#include "KeyValue/EditingEvent.h"
#include "KeyValue/KeyValueCoding.h"
#include "KeyValue/KeyValueEquality.h"
#include "KeyValue/NSKeyValueBinding.h"

#include <QDynamicPropertyChangeEvent>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QHash>
#include <QMetaObject>

#include <algorithm>
#include <optional>
#include <stdexcept>
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
    QVariantMap stored; // the values in the storage
    QVariantMap values; // the last value of each property that had the type of its default
    QHash<detail::ControlBinding *, QString> editors; // edits that are not in their properties
    QVariantMap overtaken; // the old stored values of properties whose file changed during an edit
    QFileSystemWatcher watcher;
    bool appliesAtOnce = false;
    bool isModified = false;
    bool isAllDefault = true;
    int batch = 0; // while above 0, changes are collected and reported once

    QVariant current(const QString &key) const { return q->property(key.toUtf8().constData()); }
    void set(const QString &key, const QVariant &value) const
    {
        q->setProperty(key.toUtf8().constData(), value);
    }
    bool isEdited(const QString &key) const
    {
        return std::find(editors.begin(), editors.end(), key) != editors.end();
    }
    bool isAll(const QVariantMap &wanted) const
    {
        for (auto it = wanted.begin(); it != wanted.end(); ++it) {
            if (!NS::isEqual(current(it.key()), it.value()))
                return false;
        }
        return true;
    }

    void setAll(const QVariantMap &wanted)
    {
        ++batch;
        overtaken.clear();
        for (auto it = wanted.begin(); it != wanted.end(); ++it)
            set(it.key(), it.value());
        const auto edits = editors.keys();
        for (detail::ControlBinding *const editor : edits) {
            if (editors.contains(editor))
                editor->discard();
        }
        --batch;
        changed();
    }

    void check(const QString &key, const QVariant &byDefault) const
    {
        const char *problem = nullptr;
        if (!byDefault.isValid())
            problem = "has no default value";
        else if (key.isEmpty() || q->metaObject()->indexOfProperty(key.toUtf8().constData()) >= 0)
            problem = "needs another name: Settings has a property of this name";
        if (problem)
            throw std::invalid_argument("the setting \"" + key.toStdString() + "\" " + problem);
    }

    QString path(const QString &key) const { return group.isEmpty() ? key : group + u'/' + key; }

    // The value converted to the type of the default, as key-value coding does. Nothing if it does
    // not fit.
    std::optional<QVariant> fitting(const QString &key, const QVariant &value) const
    {
        QObject reader;
        reader.setProperty("keepsPropertyTypes", true);
        reader.setProperty("value", defaults.value(key));
        try {
            NS::setValueForKeyPath(&reader, u"value"_s, value);
        } catch (const NS::KeyValueException &) {
            return std::nullopt;
        }
        return reader.property("value");
    }

    // The stored value. The default if it is missing or cannot be converted.
    QVariant read(const QString &key)
    {
        QVariant byDefault = defaults.value(key);
        if (!storage->contains(path(key)))
            return byDefault;
        if (const auto value = fitting(key, storage->value(path(key))))
            return *value;
        detail::printWarning("Warning: the setting " + path(key).toStdString() + " in "
                             + storage->fileName().toStdString() + " does not fit into "
                             + byDefault.typeName() + "; its default is used");
        return byDefault;
    }

    // Called after a property was set. Converts the value to its type, or restores the last one.
    void keepType(const QString &key)
    {
        const QVariant value = current(key);
        if (value.metaType() == defaults.value(key).metaType()) {
            values[key] = value;
            changed();
            return;
        }
        const auto fit = fitting(key, value);
        if (!fit)
            detail::printWarning("Warning: the setting " + path(key).toStdString()
                                 + " keeps its value: \"" + value.toString().toStdString()
                                 + "\" does not fit into " + defaults.value(key).typeName());
        set(key, fit.value_or(values.value(key))); // calls this function again
    }

    void editingChanged(const detail::EditingEvent &event)
    {
        if (event.isEditing()) {
            editors.insert(event.editor(), event.property());
        } else if (const QString key = editors.take(event.editor()); !isEdited(key)) {
            const QVariant before = overtaken.take(key);
            if (before.isValid() && NS::isEqual(current(key), before))
                set(key, stored.value(key));
        }
        changed();
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
            const QVariant before = stored.value(key);
            const bool differs = !NS::isEqual(current(key), before);
            stored[key] = read(key);
            if (!differs && !isEdited(key))
                set(key, stored.value(key));
            else if (!differs)
                overtaken.insert(key, before);
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
        update();
    }

    void update()
    {
        const bool hasEdits = !editors.isEmpty();
        const bool wasModified = std::exchange(isModified, hasEdits || !isAll(stored));
        const bool wasAllDefault = std::exchange(isAllDefault, !hasEdits && isAll(defaults));
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
        d->check(it.key(), it.value());
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
        const QString key = QString::fromUtf8(change->propertyName());
        if (d->defaults.contains(key))
            d->keepType(key);
    } else if (event->type() == detail::EditingEvent::eventType()) {
        d->editingChanged(*static_cast<detail::EditingEvent *>(event));
        return true;
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
        const QString file = d->storage->fileName();
        // The folder that QSettings uses for an application without an organization.
        const bool hasNoOrganization = file.contains("/Unknown Organization/"_L1);
        detail::printWarning("Warning: the settings cannot be written to " + file.toStdString()
                             + (hasNoOrganization
                                        ? ": call QCoreApplication::setOrganizationName() first"
                                        : ""));
        return false;
    }
    for (auto it = d->defaults.cbegin(); it != d->defaults.cend(); ++it)
        d->stored[it.key()] = d->current(it.key());
    d->watch();
    d->overtaken.clear();
    d->update();
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
