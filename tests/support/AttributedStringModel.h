// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSAttributedString.h>

#include <algorithm>
#include <string>

namespace NS {

/// A simple attributed string with one set of attributes for each UTF-16 unit. The real one is
/// compared with it.
class AttributedStringModel
{
public:
    QString string;
    QList<Attributes> units;

    void replace(qsizetype location, qsizetype length, const AttributedStringModel &other)
    {
        cut(location, length);
        const AttributedStringModel inserted = other;
        string.replace(location, length, inserted.string);
        units.remove(location, length);
        for (qsizetype i = 0; i < inserted.units.size(); ++i)
            units.insert(location + i, inserted.units.at(i));
    }

    template <typename Change>
    void change(qsizetype location, qsizetype length, Change change)
    {
        cut(location, length);
        std::for_each_n(units.begin() + location, length, change);
    }

    AttributedStringModel substring(qsizetype location, qsizetype length) const
    {
        cut(location, length);
        return { string.mid(location, length), units.mid(location, length) };
    }

private:
    // Unit by unit, so that it shares no code with the class under test.
    void cut(qsizetype &location, qsizetype &length) const
    {
        qsizetype count = 0;
        for (qsizetype i = 0; length > 0 && i < string.size(); ++i) {
            const bool isBeforeEnd = location < 0 ? i < location + length : i - location < length;
            count += i >= location && isBeforeEnd;
        }
        location = std::clamp(location, qsizetype(0), qsizetype(string.size()));
        length = count;
    }
};

/// The first difference between `text` and `model`, or fault in the runs of `text`. Empty if there
/// is none.
inline std::string difference(const AttributedString &text, const AttributedStringModel &model)
{
    if (text.string() != model.string)
        return "the strings differ";
    qsizetype place = 0;
    for (qsizetype i = 0; i < text.runs().size(); ++i) {
        const auto &run = text.runs().at(i);
        if (run.location != place || run.length <= 0)
            return "run " + std::to_string(i) + " does not follow the one before";
        if (i > 0 && text.runs().at(i - 1).attributes == run.attributes)
            return "run " + std::to_string(i) + " equals the one before";
        place = run.end();
    }
    if (place != text.length())
        return "the runs do not cover the text";
    for (qsizetype i = 0; i < text.length(); ++i) {
        if (text.attributes(i) != model.units.at(i))
            return "unit " + std::to_string(i) + " differs";
    }
    return {};
}

} // namespace NS
