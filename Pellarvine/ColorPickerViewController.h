// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSColorPanel.h>
#include <pellarvine/Platform/NSViewController.h>

#include <memory>

namespace Pellarvine {

/// Shows the content of the shared colour panel elsewhere, such as in a popover, with the opacity
/// slider and the wheel:
///
///     Pellarvine::ColorPickerViewController picker;
///     NS::addAndPin(inspector, picker.view());
///
/// The content exists once. The panel takes it back when the panel is shown or this controller is
/// deleted. Main thread only.
class PELLARVINE_EXPORT ColorPickerViewController : public NS::ViewController
{
    Q_OBJECT
    Q_PROPERTY(NS::ColorPanel *colorPanel READ colorPanel NOTIFY colorPanelChanged)

public:
    explicit ColorPickerViewController(QObject *parent = nullptr);
    ~ColorPickerViewController() override;

    /// The shared panel; null until the view is loaded.
    NS::ColorPanel *colorPanel() const;

Q_SIGNALS:
    void colorPanelChanged(NS::ColorPanel *colorPanel);

protected:
    /// Hides the panel and takes its content as the view.
    void loadView() override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
