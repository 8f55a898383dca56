// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QEvent>
#include <QString>

namespace Pellarvine::detail {

class ControlBinding;

/// Sent to a model when a control begins to hold an edit of one of its properties that the property
/// does not have, since it waits or was refused, and when the control no longer does.
class PELLARVINE_PRIVATE_EXPORT EditingEvent : public QEvent
{
public:
    EditingEvent(QString property, ControlBinding *editor, bool isEditing);

    static QEvent::Type eventType();

    const QString &property() const { return m_property; }
    /// Alive until the event that says that it no longer holds the edit has been sent.
    ControlBinding *editor() const { return m_editor; }
    bool isEditing() const { return m_isEditing; }

private:
    QString m_property;
    ControlBinding *m_editor;
    bool m_isEditing;
};

} // namespace Pellarvine::detail
