// SPDX-License-Identifier: MIT
// Not API: the options of a binding in an interface file.
#pragma once

#include "Base/Global.h"
#include "KeyValue/NSBindingOptions.h"

#include <QString>

namespace Pellarvine::detail {

/// text = owner.port | commit | format("%d") | required | popover | placeholder("No server")
struct NibBindingOptions
{
    bool negates = false; ///< enabled = !owner.busy
    bool commits = false;
    bool isRequired = false;
    bool hasPopover = false;
    bool isOneWay = false;
    QString format = {};
    QString placeholder = {};
    QString title = {}; ///< choices = owner.countries | title("name") | tag("code")
    QString tag = {};

    bool operator==(const NibBindingOptions &) const = default;
};

/// `text` is the part from the first "|" on, or empty; `entry` is for the fault. Throws NibFault.
NibBindingOptions nibBindingOptions(const QString &text, const QString &entry);

/// The options for NS::bind.
NS::BindingOptions bindingOptions(const NibBindingOptions &options);

} // namespace Pellarvine::detail
