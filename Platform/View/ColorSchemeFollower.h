// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QObject>
#include <QPalette>

namespace Pellarvine::detail {

/// While it lives, the program's palette is dark or light, and accented, as the user has set it for
/// the desktop. Without such a setting it is the platform's, as it is afterwards.
class PELLARVINE_INTERNAL_EXPORT ColorSchemeFollower : public QObject
{
    Q_OBJECT

public:
    explicit ColorSchemeFollower(QObject *parent = nullptr);
    ~ColorSchemeFollower() override;

private:
    void apply();

    QPalette m_own; // the palette without this object
};

} // namespace Pellarvine::detail
