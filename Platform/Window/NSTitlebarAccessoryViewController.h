// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSViewController.h>

namespace NS {

/// A view that makes a window's title bar higher by its own height:
///
///     auto *const bar = new NS::TitlebarAccessoryViewController;
///     bar->setView(new SearchBar); // as wide as the title bar, within its own limits
///     window->addTitlebarAccessoryViewController(bar);
///
/// The title bar follows when the view changes its height.
class PELLARVINE_EXPORT TitlebarAccessoryViewController : public ViewController
{
    Q_OBJECT
    Q_PROPERTY(double fullScreenMinHeight READ fullScreenMinHeight WRITE setFullScreenMinHeight
                       NOTIFY fullScreenMinHeightChanged)

public:
    explicit TitlebarAccessoryViewController(QObject *parent = nullptr);
    ~TitlebarAccessoryViewController() override;

    /// In full screen the title bar is at least that high, in device-independent pixels. Where
    /// nobody asks for more, it shows the standard bar alone. Default: 0; below 0 and no finite
    /// number count as 0.
    double fullScreenMinHeight() const;
    void setFullScreenMinHeight(double height);

Q_SIGNALS:
    void fullScreenMinHeightChanged(double height);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
