// SPDX-License-Identifier: MIT
#include "Ostrevane/SystemDetails.h"

#include "Ostrevane/App.h"

#include <QGuiApplication>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

QStringList systemDetails()
{
    return {
        u"Qt %1, %2"_s.arg(QString::fromLatin1(qVersion()), QGuiApplication::platformName()),
        QSysInfo::prettyProductName(),
        u"%1 %2, %3"_s.arg(QSysInfo::kernelType(), QSysInfo::kernelVersion(), App::deviceModel()),
    };
}

} // namespace Pellarvine::detail
