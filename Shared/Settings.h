// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>
#include <QSettings>
#include <QVariantMap>

#include <memory>

namespace Pellarvine {

/// The settings in a group of a QSettings, as an object that controls can be bound to:
///
///     const QVariantMap defaults { { u"host"_s, u"localhost"_s }, { u"port"_s, 80 } };
///     m_settings = new Settings(u"network"_s, defaults, this);
///     NS::bind(m_port, u"value"_s, m_settings, u"port"_s);
///     connectButtons(m_settings, m_buttonBox); // Apply, Reset, Restore Defaults, OK, Cancel
///     const int port = m_settings->property("port").toInt();
///
/// Each default makes a dynamic property of its name. The property always has the type of the
/// default. A value that does not convert is refused: key-value coding throws, and setProperty()
/// prints a warning. A stored value that does not convert is a warning and the default. The
/// properties contain the edited values. apply() stores them; with `appliesAtOnce` each change is
/// stored at once. A value that equals its default is not stored, so it follows the default of a
/// later version.
///
/// A bound control can have an edit that the property does not have yet: it waits
/// (`NS::BindingOptions::commit`) or was refused. It counts as an edit of the property.
///
/// Changes that another program makes in the file are read; a property that is being edited keeps
/// its edit. Main thread only.
class PELLARVINE_EXPORT Settings : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool modified READ isModified NOTIFY modifiedChanged)
    Q_PROPERTY(bool allDefault READ isAllDefault NOTIFY allDefaultChanged)
    Q_PROPERTY(bool appliesAtOnce READ appliesAtOnce WRITE setAppliesAtOnce NOTIFY
                       appliesAtOnceChanged)
    Q_PROPERTY(bool keepsPropertyTypes READ keepsPropertyTypes CONSTANT)

public:
    /// In the application's own QSettings, which can be written if the program has called
    /// QCoreApplication::setOrganizationName() before.
    ///
    /// Throws `std::invalid_argument` for a default without a value, and for one whose name is
    /// empty or a declared property's, such as "modified" or "objectName".
    explicit Settings(const QString &group, const QVariantMap &defaults, QObject *parent = nullptr);

    /// In `storage`, which is not null. Throws the same.
    Settings(std::unique_ptr<QSettings> storage, const QString &group, const QVariantMap &defaults,
             QObject *parent = nullptr);

    ~Settings() override;

    bool isModified() const; ///< a property differs from what is stored, or a control has an edit
    bool isAllDefault() const; ///< each property has its default, and no control has an edit

    /// Whether each change is stored at once: for what a program remembers by itself, such as the
    /// place of its window. Default: false.
    bool appliesAtOnce() const;
    void setAppliesAtOnce(bool appliesAtOnce); ///< applies what is modified, too

    bool keepsPropertyTypes() const { return true; } ///< for key-value coding

    /// Binds each descendant of `root` that has a dynamic property `setting`, the name of one of
    /// these properties, by its USER property: `NS::bind(child, u"value"_s, this, setting)`. Throws
    /// what that throws.
    void bindChildren(QObject *root);

    bool event(QEvent *event) override; ///< learns of changes of the properties and of edits

public Q_SLOTS:
    /// Stores the properties, without what controls still hold (see `NS::commitEditing`). False,
    /// with a warning, if the file cannot be written; they are still modified then.
    bool apply();

    void reset(); ///< back to what is stored; discards the edits in controls, too
    void restoreDefaults(); ///< the same with the defaults; stores nothing yet

Q_SIGNALS:
    void modifiedChanged(bool isModified);
    void allDefaultChanged(bool isAllDefault);
    void appliesAtOnceChanged(bool appliesAtOnce);
    void applied(); ///< the properties have been stored

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace Pellarvine
