// SPDX-License-Identifier: MIT
// Reads a property list. Any bytes must give a value, or an error at an existing place.
#include <pellarvine/Platform/NSPropertyList.h>

#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray xml(reinterpret_cast<const char *>(data), qsizetype(size));
    try {
        if (!NS::propertyListFromXML(xml).isValid())
            std::abort();
    } catch (const NS::PropertyListError &error) {
        const auto lines = std::count(xml.begin(), xml.end(), '\n') + 1;
        // A line may also end in a carriage return alone.
        const auto returns = std::count(xml.begin(), xml.end(), '\r');
        if (error.line() < 1 || error.line() > lines + returns || error.column() < 1)
            std::abort();
    }
    return 0;
}
