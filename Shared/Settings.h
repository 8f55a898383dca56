// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>
#include <QSettings>
#include <QVariantMap>

#include <memory>

namespace Pellarvine {

/// The settings in one group of a QSettings, as an object with properties for bindings:
///
///     const QVariantMap defaults { { u"host"_s, u"localhost"_s }, { u"port"_s, 80 } };
///     m_settings = new Settings(u"network"_s, defaults, this);
///     NS::bind(m_port, u"value"_s, m_settings, u"port"_s);
///     connectButtons(m_settings, m_buttonBox); // Apply, Reset, Restore Defaults, OK, Cancel
///     const int port = m_settings->property("port").toInt();
///
/// Each default adds a dynamic property of its name and type. The properties contain the edited
/// values; apply() stores them. A value that equals its default is not stored, so it follows the
/// default of a later version of the program.
///
/// The type of a property never changes. A value that cannot be converted to it is refused:
/// key-value coding throws, and setProperty() prints a warning. For a stored value that cannot be
/// converted, a warning is printed and the property gets its default.
///
/// A bound control can hold an edit that the property does not have yet, because it waits for its
/// commit (`NS::BindingOptions::commit`) or was refused. It counts as an edit of the property.
///
/// If another program changes the file, the properties follow, except those that are being edited.
/// Main thread only.
class PELLARVINE_EXPORT Settings : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool modified READ isModified NOTIFY modifiedChanged)
    Q_PROPERTY(bool allDefault READ isAllDefault NOTIFY allDefaultChanged)
    Q_PROPERTY(bool appliesAtOnce READ appliesAtOnce WRITE setAppliesAtOnce NOTIFY
                       appliesAtOnceChanged)
    Q_PROPERTY(bool keepsPropertyTypes READ keepsPropertyTypes CONSTANT)

public:
    /// Uses the application's own QSettings. Call QCoreApplication::setOrganizationName() before;
    /// without it, nothing can be stored. `parent` owns the object.
    ///
    /// Throws `std::invalid_argument` for a default that is an invalid QVariant, and for one whose
    /// name is empty or that of a declared property, such as "modified" or "objectName".
    explicit Settings(const QString &group, const QVariantMap &defaults, QObject *parent = nullptr);

    /// Uses `storage`, which is not null. Throws the same.
    Settings(std::unique_ptr<QSettings> storage, const QString &group, const QVariantMap &defaults,
             QObject *parent = nullptr);

    ~Settings() override;

    /// Whether a property differs from its stored value, or a control holds an edit.
    bool isModified() const;
    /// Whether each property has its default, and no control holds an edit.
    bool isAllDefault() const;

    /// Whether each change is stored at once, for values such as the size of a window. Setting it
    /// to true also stores present modifications. Default: false.
    bool appliesAtOnce() const;
    void setAppliesAtOnce(bool appliesAtOnce);

    /// True: see NS::setValueForKeyPath().
    bool keepsPropertyTypes() const { return true; }

    /// Binds each descendant of `root` with a dynamic property `setting`, which is the name of a
    /// property of this object: calls `NS::bind(child, u"value"_s, this, setting)`, and passes on
    /// its exceptions.
    void bindChildren(QObject *root);

    bool event(QEvent *event) override; ///< handles changes of the properties and edits

public Q_SLOTS:
    /// Stores the properties. Edits that controls still hold are not among them: call
    /// `NS::commitEditing` before. If the file cannot be written, prints a warning and returns
    /// false; the properties are still modified.
    bool apply();

    void reset(); ///< sets all properties to their stored values, and discards edits in controls
    void restoreDefaults(); ///< the same with the defaults; does not store them

Q_SIGNALS:
    void modifiedChanged(bool isModified);
    void allDefaultChanged(bool isAllDefault);
    void appliesAtOnceChanged(bool appliesAtOnce);
    void applied(); ///< emitted after the properties have been stored

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace Pellarvine
