// SPDX-License-Identifier: MIT
#include "Window/NSTitlebarAccessoryViewController.h"

#include "Base/Assign.h"

#include <algorithm>
#include <cmath>

namespace NS {

struct TitlebarAccessoryViewController::Private
{
    double fullScreenMinHeight = 0.0;
};

TitlebarAccessoryViewController::TitlebarAccessoryViewController(QObject *parent)
    : ViewController(parent)
    , d(std::make_unique<Private>())
{ }

TitlebarAccessoryViewController::~TitlebarAccessoryViewController() = default;

double TitlebarAccessoryViewController::fullScreenMinHeight() const
{
    return d->fullScreenMinHeight;
}

void TitlebarAccessoryViewController::setFullScreenMinHeight(double height)
{
    height = std::isfinite(height) ? std::max(0.0, height) : 0.0;
    if (detail::assign(d->fullScreenMinHeight, height))
        Q_EMIT fullScreenMinHeightChanged(height);
}

} // namespace NS
