// SPDX-License-Identifier: MIT
#include "KeyValue/WidgetAccess.h"

#include <atomic>

namespace Pellarvine::detail {

namespace {

// Written while libraries are loaded, which may be after threads have started.
std::atomic<const WidgetAccess *> installed = nullptr;
std::atomic<MessageBubble> installedBubble = nullptr;

} // namespace

void setWidgetAccess(const WidgetAccess *access)
{
    installed = access;
}

const WidgetAccess *widgetAccess()
{
    return installed;
}

void setMessageBubble(MessageBubble bubble)
{
    installedBubble = bubble;
}

MessageBubble messageBubble()
{
    return installedBubble;
}

} // namespace Pellarvine::detail
