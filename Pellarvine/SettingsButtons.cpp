// SPDX-License-Identifier: MIT
#include "Pellarvine/SettingsButtons.h"

#include "KeyValue/NSBindingOptions.h"
#include "KeyValue/NSKeyValueBinding.h"

#include <QAbstractButton>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEvent>
#include <QPointer>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

QDialog *dialog(const QDialogButtonBox *box)
{
    return qobject_cast<QDialog *>(box->window());
}

bool commitAndApply(Settings *settings, const QDialogButtonBox *box)
{
    return NS::commitEditing(box->window()) && settings->apply();
}

// Resets the settings once the dialog of a box, which it may join later, is rejected.
class Rejection : public QObject
{
public:
    Rejection(Settings *settings, QDialogButtonBox *box)
        : QObject(box)
        , m_settings(settings)
        , m_box(box)
    {
        box->installEventFilter(this);
        follow();
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Show)
            follow();
        return false;
    }

private:
    void follow()
    {
        disconnect(m_connection);
        if (QDialog *const shown = dialog(m_box); shown && m_settings)
            m_connection = connect(shown, &QDialog::rejected, m_settings, &Settings::reset);
    }

    QPointer<Settings> m_settings;
    QDialogButtonBox *m_box;
    QMetaObject::Connection m_connection;
};

} // namespace

void connectButtons(Settings *settings, QDialogButtonBox *box)
{
    const auto bind = [=](QDialogButtonBox::StandardButton which, const QString &property,
                          bool negate) {
        if (QPushButton *const button = box->button(which))
            NS::bind(button, u"enabled"_s, settings, property, { .negate = negate });
    };
    bind(QDialogButtonBox::Apply, u"modified"_s, false);
    bind(QDialogButtonBox::Reset, u"modified"_s, false);
    bind(QDialogButtonBox::RestoreDefaults, u"allDefault"_s, true);
    QObject::connect(box, &QDialogButtonBox::clicked, settings, [=](QAbstractButton *button) {
        switch (box->standardButton(button)) {
        case QDialogButtonBox::Apply:
            commitAndApply(settings, box);
            break;
        case QDialogButtonBox::Reset:
            settings->reset();
            break;
        case QDialogButtonBox::RestoreDefaults:
            settings->restoreDefaults();
            break;
        default:
            break;
        }
    });
    QObject::connect(box, &QDialogButtonBox::accepted, settings, [=] {
        if (commitAndApply(settings, box) && dialog(box))
            dialog(box)->accept();
    });
    QObject::connect(box, &QDialogButtonBox::rejected, settings, [=] {
        settings->reset();
        if (dialog(box))
            dialog(box)->reject();
    });
    new Rejection(settings, box);
}

} // namespace Pellarvine
