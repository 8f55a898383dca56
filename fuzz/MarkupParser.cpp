// SPDX-License-Identifier: MIT
// Parses markup, and compares a short text's result with the grammar taken literally: every rule
// through ICU, every match one edit.
#include "../tests/support/LiteralMarkup.h"

#include <pellarvine/Platform/NSAttributedString+Text.h>

#include <QGuiApplication>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

// ICU takes quadratic time and worse, and so does editing in place.
constexpr qsizetype longestCompared = 300;

// The characters for bytes above 127: line ends, whole and half emoji, joiners and non-joiners,
// right to left, the last unit.
constexpr char16_t specials[] = {
    0x0085, 0x2028, 0x2029, 0x000B, 0x000C, 0x000D, 0xD83D, 0xDE00, 0xD83C, 0xDDE9, 0xDFFD, 0x200D,
    0xFE0F, 0x0301, 0x0300, 0x02FF, 0x0600, 0x0903, 0x1100, 0x1161, 0x11A8, 0xAC00, 0x00AD, 0x200B,
    0x2764, 0x05D0, 0x202E, 0x0627, 0xD800, 0xDC00, 0xDFFF, 0xFFFF, 0xFEFF, 0x00E9, 0x01FF, 0x0200,
};

const Pellarvine::MarkupParser &parser()
{
    static int argc = 1;
    static char name[] = "fuzz_markup_parser";
    static char *argv[] = { name, nullptr };
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const auto *const application = new QGuiApplication(argc, argv);
    Q_UNUSED(application)
    // Named apart, so that a mixed-up font shows.
    static const Pellarvine::MarkupParser parser(QFont(u"Base"_s, 10), QFont(u"Bold"_s, 10),
                                                 QFont(u"Italic"_s, 10), QFont(u"Mono"_s, 10));
    return parser;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QString markup;
    for (std::size_t i = 0; i < size; ++i)
        markup += data[i] < 128 ? QChar(char16_t(data[i]))
                                : QChar(specials[std::size_t(data[i] - 128) % std::size(specials)]);
    const NS::AttributedString text = parser().parse(markup);
    if (text.length() > markup.size() || NS::html(text).size() < text.length())
        std::abort();
    const QString start = markup.first(std::min(markup.size(), longestCompared));
    // A kerning of "nan" is not equal to itself, so its runs cannot be compared.
    if (start.contains("nan"_L1, Qt::CaseInsensitive))
        return 0;
    if (parser().parse(start) != LiteralMarkup::parse(parser(), start)) {
        std::fprintf(stderr, "not what the grammar says\n");
        std::abort();
    }
    return 0;
}
