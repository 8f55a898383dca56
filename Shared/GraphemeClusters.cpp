// SPDX-License-Identifier: MIT
#include "Shared/GraphemeClusters.h"

#include "Base/Failure.h"

#include <unicode/brkiter.h>
#include <unicode/uniset.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace Pellarvine::detail {

namespace {

// Below this, every unit is a character, except a line feed behind a carriage return.
constexpr char16_t firstCombiningMark = 0x0300;

// Whether this holds for the whole text. Collects bits without an early return, so that compilers
// vectorise it. It does not accept U+0200 to U+02FF.
bool isPlain(QStringView text)
{
    quint16 bits = 0;
    quint16 returns = 0;
    for (const QChar unit : text) {
        bits |= unit.unicode();
        returns |= quint16(unit == u'\r' ? 1 : 0);
    }
    return bits < 0x0200 && returns == 0;
}

// Two neighbours of these classes are always two characters, except CR LF, in every context. Emoji
// are among them; characters that join emoji are not.
bool standsAlone(UChar32 character)
{
    static const std::unique_ptr<const icu::UnicodeSet> set = [] {
        UErrorCode status = U_ZERO_ERROR;
        auto made = std::make_unique<icu::UnicodeSet>(
                u"[\\p{GCB=Other}\\p{GCB=Control}\\p{GCB=CR}\\p{GCB=LF}]", status);
        if (U_FAILURE(status))
            fatalError("Could not read character classes");
        made->freeze();
        return made;
    }();
    return character < firstCombiningMark || set->contains(character);
}

qsizetype countWithIcu(QStringView text)
{
    thread_local const std::unique_ptr<icu::BreakIterator> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::BreakIterator> made(
                icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        if (U_FAILURE(status))
            fatalError("Could not create break iterator");
        return made;
    }();
    constexpr qsizetype longest = std::numeric_limits<int32_t>::max();
    const icu::UnicodeString alias(false, text.utf16(), int32_t(std::min(text.size(), longest)));
    iterator->setText(alias);
    qsizetype count = 0;
    while (iterator->next() != icu::BreakIterator::DONE)
        ++count;
    return count;
}

} // namespace

qsizetype GraphemeClusterCounter::count(QStringView text)
{
    m_isPlain = m_isPlain || isPlain(text);
    if (m_isPlain)
        return text.size();

    // Only ranges in which characters may join are passed to ICU, each with the character before
    // it. A range ends after so many single characters that a new start is cheaper.
    constexpr int enough = 16;
    const char16_t *const units = text.utf16();
    const qsizetype size = text.size();
    qsizetype count = 0;
    qsizetype previous = 0;
    for (qsizetype place = 0; place < size;) {
        const qsizetype start = place;
        UChar32 character = 0;
        U16_NEXT(units, place, size, character);
        if (standsAlone(character)) {
            const bool endsCrLf = character == u'\n' && start > 0 && units[start - 1] == u'\r';
            count += endsCrLf ? 0 : 1;
            previous = start;
            continue;
        }
        // The character before was counted.
        const qsizetype first = start > 0 ? previous : start;
        count -= start > 0 ? 1 : 0;
        for (int alone = 0; alone < enough && place < size;) {
            previous = place;
            U16_NEXT(units, place, size, character);
            alone = standsAlone(character) ? alone + 1 : 0;
        }
        count += countWithIcu(text.sliced(first, place - first));
    }
    return count;
}

} // namespace Pellarvine::detail
