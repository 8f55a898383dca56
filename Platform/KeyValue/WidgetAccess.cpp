// SPDX-License-Identifier: MIT
#include "KeyValue/WidgetAccess.h"

#include <atomic>

namespace Pellarvine::detail {

namespace {

// Written while libraries are loaded, which may be after threads have started.
std::atomic<const WidgetAccess *> installed = nullptr;

} // namespace

void setWidgetAccess(const WidgetAccess *access)
{
    installed = access;
}

const WidgetAccess *widgetAccess()
{
    return installed;
}

} // namespace Pellarvine::detail
