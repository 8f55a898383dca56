// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QObject>
#include <QPalette>

namespace Pellarvine::detail {

/// As long as the object exists, the application's palette follows the desktop's settings: dark or
/// light, and the accent colour. Without such settings, and after the object was destroyed, the
/// palette is that of the platform. Main thread only.
class PELLARVINE_INTERNAL_EXPORT ColorSchemeFollower : public QObject
{
    Q_OBJECT

public:
    explicit ColorSchemeFollower(QObject *parent = nullptr);
    ~ColorSchemeFollower() override;

private:
    void apply();

    QPalette m_own; // the application's palette before this object changed it
};

} // namespace Pellarvine::detail
