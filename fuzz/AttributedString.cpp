// SPDX-License-Identifier: MIT
// Edits an attributed string and a plain model of one alike, four bytes an edit, and compares.
#include "../tests/support/AttributedStringModel.h"

#include <pellarvine/Platform/NSMutableAttributedString.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longest = 500;

// Places near the text's two ends, far outside it, and what lies between.
qsizetype place(std::uint8_t byte)
{
    if (byte == 255)
        return std::numeric_limits<qsizetype>::max();
    if (byte == 254)
        return std::numeric_limits<qsizetype>::min();
    return qsizetype(byte) - 8;
}

NS::Attributes attributes(std::uint8_t byte)
{
    NS::Attributes result;
    for (int key = 0; key < 3; ++key) {
        if (byte >> key & 1)
            result.insert(QString::number(key), byte >> (3 + key) & 1);
    }
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    NS::MutableAttributedString text;
    NS::AttributedStringModel model;
    for (; size >= 4; data += 4, size -= 4) {
        const qsizetype location = place(data[1]);
        const qsizetype length = place(data[2]);
        const NS::Attributes values = attributes(data[3]);
        const QString string(data[3] % 5, QChar(char16_t(u'a' + data[3] % 7)));
        switch (data[0] % 7) {
        case 0:
            text.replaceCharacters(location, length, NS::AttributedString(string, values));
            model.replace(location, length, { string, { string.size(), values } });
            break;
        case 1: {
            // The text itself, or a part of it, behind everything.
            const NS::AttributedString before = text;
            text.append(text.attributedSubstring(location, length));
            model.replace(std::numeric_limits<qsizetype>::max(), 0,
                          model.substring(location, length));
            if (before != NS::AttributedString(text).attributedSubstring(0, before.length()))
                std::abort();
            break;
        }
        case 2:
            text.setAttributes(values, location, length);
            model.change(location, length, [&](NS::Attributes &unit) { unit = values; });
            break;
        case 3:
            text.addAttributes(values, location, length);
            model.change(location, length, [&](NS::Attributes &unit) { unit.insert(values); });
            break;
        case 4: {
            const QString key = QString::number(data[3] % 3);
            text.removeAttribute(key, location, length);
            model.change(location, length, [&](NS::Attributes &unit) { unit.remove(key); });
            break;
        }
        case 5:
            text = text.attributedSubstring(location, length);
            model = model.substring(location, length);
            break;
        case 6:
            text.replaceCharacters(location, length, text);
            model.replace(location, length, model);
            break;
        }
        if (const std::string problem = NS::difference(text, model); !problem.empty()) {
            std::fprintf(stderr, "%s\n", problem.c_str());
            std::abort();
        }
        if (text.length() > longest) {
            text = text.attributedSubstring(0, longest / 2);
            model = model.substring(0, longest / 2);
        }
    }
    return 0;
}
