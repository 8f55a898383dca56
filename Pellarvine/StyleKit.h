// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>
#include <QRectF>

QT_FORWARD_DECLARE_CLASS(QPalette)

namespace Pellarvine {

/// The drawings that tool bars and inspectors share, flat and without gradients:
///
///     const NS::GraphicsContext context(painter); // y grows upwards
///     Pellarvine::StyleKit::drawToolbar(QRectF(0, 0, 300, 40));
///
/// The functions draw into the current NS::GraphicsContext, in device-independent pixels with y
/// upwards. The lines are along the lower edge. Without a current context they draw nothing and
/// print a warning. The colours are fixed, unless a palette is given: then its text colour replaces
/// black, and its base colour replaces white. Any thread that has a context.
class PELLARVINE_EXPORT StyleKit : public QObject
{
    Q_OBJECT

public:
    explicit StyleKit(QObject *parent = nullptr);
    ~StyleKit() override;

    /// A grey line one unit thick and, if `opaqueBackground`, a white area above it.
    Q_INVOKABLE static void drawToolbar(const QRectF &frame, bool opaqueBackground = true);
    /// The same with the palette's colours of an active window: the line in the text colour, half
    /// opaque, and the area in the base colour.
    Q_INVOKABLE static void drawToolbar(const QRectF &frame, bool opaqueBackground,
                                        const QPalette &palette);

    /// A light grey line one unit thick.
    Q_INVOKABLE static void drawInspectorSection(const QRectF &frame);
    /// The same in the palette's text colour of an active window, one third opaque.
    Q_INVOKABLE static void drawInspectorSection(const QRectF &frame, const QPalette &palette);
};

} // namespace Pellarvine
