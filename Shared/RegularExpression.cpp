// SPDX-License-Identifier: MIT
#include "Shared/RegularExpression.h"

#include "Base/Failure.h"

#include <unicode/regex.h>

#include <algorithm>
#include <limits>

namespace Pellarvine::detail {

namespace {

// ICU counts in 32 bits. The text beyond that is not searched.
int32_t icuLength(qsizetype length)
{
    return int32_t(std::min(length, qsizetype(std::numeric_limits<int32_t>::max())));
}

} // namespace

struct RegularExpression::Private
{
    Private(const QString &pattern, QStringView text)
        : subject(false, text.utf16(), icuLength(text.size()))
        , matcher(icu::UnicodeString(false, reinterpret_cast<const char16_t *>(pattern.utf16()),
                                     icuLength(pattern.size())),
                  subject, 0, status)
    { }

    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString subject; // an alias of the text
    icu::RegexMatcher matcher;
};

RegularExpression::RegularExpression(const QString &pattern, QStringView text, qsizetype length)
    : d(std::make_unique<Private>(pattern, text))
{
    if (U_FAILURE(d->status))
        fatalError("Could not compile regular expression " + pattern.toStdString());
    // The limit of matcher steps, about a millisecond each, for one search. Steps are counted, so
    // the result does not depend on the speed of the machine.
    constexpr int32_t limit = 5000;
    d->matcher.setTimeLimit(limit, d->status);
    d->matcher.region(0, icuLength(length), d->status);
}

RegularExpression::~RegularExpression() = default;

bool RegularExpression::findNext(PatternMatch &match)
{
    const bool isFound = d->matcher.find(d->status);
    if (U_FAILURE(d->status)) {
        printWarning("Warning: regular expression gave up: " + std::string(u_errorName(d->status)));
        return false;
    }
    if (!isFound)
        return false;
    match.clear();
    for (int32_t group = 0; group <= d->matcher.groupCount(); ++group) {
        const int32_t start = d->matcher.start(group, d->status);
        match.push_back({ start, d->matcher.end(group, d->status) - start });
    }
    return true;
}

} // namespace Pellarvine::detail
