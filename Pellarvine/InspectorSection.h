// SPDX-License-Identifier: MIT
// Not API: what the two views of an inspector's sections have in common.
#pragma once

#include "Base/Assign.h"
#include "Pellarvine/StyleKit.h"
#include "View/NSView.h"

#include <QWidget>

namespace Pellarvine::detail {

struct InspectorSection
{
    bool usesPaletteColors = false;

    /// True if this is a change; the view is then drawn anew.
    bool setUsesPaletteColors(QWidget &view, bool uses)
    {
        const bool isChange = assign(usesPaletteColors, uses);
        if (isChange)
            view.update();
        return isChange;
    }

    void draw(const QWidget &view) const
    {
        if (usesPaletteColors)
            StyleKit::drawInspectorSection(NS::bounds(&view), view.palette());
        else
            StyleKit::drawInspectorSection(NS::bounds(&view));
    }
};

} // namespace Pellarvine::detail
