// SPDX-License-Identifier: MIT
#include "Place.h"

#include "SystemError.h"

#include <array>
#include <cerrno>
#include <climits>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int mostLinks = 40; // as many as the system follows

std::optional<QByteArray> linkTarget(const QByteArray &path)
{
    std::array<char, PATH_MAX> target;
    const ssize_t length = readlink(path.constData(), target.data(), target.size());
    if (length < 0)
        return std::nullopt;
    return QByteArray(target.data(), length);
}

} // namespace

Place placeOf(const QByteArray &path)
{
    Place place { std::nullopt, path, false };
    const QByteArray descriptors = "/proc/" + QByteArray::number(getpid()) + "/fd";
    for (int links = 0; links < mostLinks; ++links) {
        const qsizetype nameStart = place.path.lastIndexOf('/') + 1;
        const QByteArray name = place.path.sliced(nameStart);
        const QByteArray folder = nameStart == 0 ? "." : place.path.first(nameStart);
        std::array<char, PATH_MAX> resolved;
        // An unreadable folder is reported when the path is opened.
        if (name.isEmpty() || !realpath(folder.constData(), resolved.data()))
            return place;
        if (descriptors == resolved.data()) {
            bool isNumber = false;
            const int descriptor = name.toInt(&isNumber);
            if (isNumber) {
                place.descriptor = descriptor;
                return place;
            }
        }
        const std::optional<QByteArray> target = linkTarget(place.path);
        if (!target)
            return place;
        place.isLink = true;
        place.path =
                target->startsWith('/') ? *target : QByteArray(resolved.data()) + '/' + *target;
    }
    throwSystemError(path, ELOOP);
}
