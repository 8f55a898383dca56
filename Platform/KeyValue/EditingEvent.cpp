// SPDX-License-Identifier: MIT
#include "KeyValue/EditingEvent.h"

#include <utility>

namespace Pellarvine::detail {

EditingEvent::EditingEvent(QString property, ControlBinding *editor, bool isEditing)
    : QEvent(eventType())
    , m_property(std::move(property))
    , m_editor(editor)
    , m_isEditing(isEditing)
{ }

QEvent::Type EditingEvent::eventType()
{
    static const auto type = QEvent::Type(QEvent::registerEventType());
    return type;
}

} // namespace Pellarvine::detail
