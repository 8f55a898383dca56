// SPDX-License-Identifier: MIT
#include "Ostrevane/DeviceModel.h"

#include "Base/Failure.h"

namespace Pellarvine::detail {

QString deviceModel(const MachineField &machine)
{
    QString text;
    for (const std::int8_t byte : machine) {
        if (byte < 0)
            fatalError("Error: the machine's name has a byte above 127");
        if (byte != 0)
            text.append(QChar(char16_t(byte)));
    }
    return text;
}

} // namespace Pellarvine::detail
