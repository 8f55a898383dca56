// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QEvent>
#include <QString>

namespace Pellarvine::detail {

class ControlBinding;

/// Sent to a model when a control begins to hold an edit that is not in the model, and when it no
/// longer holds it. Such an edit waits for its commit, or was refused.
class PELLARVINE_PRIVATE_EXPORT EditingEvent : public QEvent
{
public:
    EditingEvent(QString property, ControlBinding *editor, bool isEditing);

    static QEvent::Type eventType();

    const QString &property() const { return m_property; }
    /// Valid until the second event has been sent, whose isEditing() is false.
    ControlBinding *editor() const { return m_editor; }
    bool isEditing() const { return m_isEditing; }

private:
    QString m_property;
    ControlBinding *m_editor;
    bool m_isEditing;
};

} // namespace Pellarvine::detail
