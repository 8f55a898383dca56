// SPDX-License-Identifier: MIT
#include "Scenes/NibEntry.h"

#include "Base/EditDistance.h"

#include <QMetaObject>
#include <QObject>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// Matches the whole text.
QRegularExpression pattern(const QString &text)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(text));
}

NibFault malformed(const QString &text, const QString &form)
{
    return { NS::NibError::malformed, text, u"\"%1\" is malformed: %2"_s.arg(text, form) };
}

NibPath path(const QString &text)
{
    return { text.section(u'.', 0, 0), text.section(u'.', 1) };
}

NibEntry outlet(const QString &text)
{
    static const QRegularExpression sentence = pattern(uR"((\w+(?:\.\w+)+))"_s);
    const auto match = sentence.match(text);
    if (!match.hasMatch())
        throw malformed(text, u"an outlet has the form \"owner.nameField\""_s);
    return NibOutlet { path(match.captured(1)) };
}

NibEntry binding(const QString &text)
{
    static const QRegularExpression sentence =
            pattern(uR"((\w+)\s*=\s*(!\s*)?(\w+(?:\.\w+)+)\s*(\|.*)?)"_s);
    const auto match = sentence.match(text);
    if (!match.hasMatch())
        throw malformed(text, u"a binding has the form \"text = owner.name\""_s);
    NibBindingOptions options = nibBindingOptions(match.captured(4), text);
    options.negates = match.hasCaptured(2);
    return NibBinding { match.captured(1), path(match.captured(3)), options };
}

NibEntry action(const QString &text)
{
    static const QRegularExpression sentence = pattern(
            uR"((\w+(?:\s*\([^()]*\))?)\s*->\s*(\w+(?:\.\w+)*)\.(\w+(?:\s*\([^()]*\))?))"_s);
    const auto match = sentence.match(text);
    if (!match.hasMatch())
        throw malformed(text, u"an action has the form \"clicked -> owner.save\""_s);
    return NibAction { match.captured(1), path(match.captured(2)), match.captured(3) };
}

enum class Axis {
    x,
    y,
    dimension,
};

struct Attribute
{
    QLatin1StringView name;
    NS::LayoutAttribute value;
    Axis axis;
};

const Attribute attributes[] = {
    { "left"_L1, NS::LayoutAttribute::left, Axis::x },
    { "right"_L1, NS::LayoutAttribute::right, Axis::x },
    { "top"_L1, NS::LayoutAttribute::top, Axis::y },
    { "bottom"_L1, NS::LayoutAttribute::bottom, Axis::y },
    { "leading"_L1, NS::LayoutAttribute::leading, Axis::x },
    { "trailing"_L1, NS::LayoutAttribute::trailing, Axis::x },
    { "width"_L1, NS::LayoutAttribute::width, Axis::dimension },
    { "height"_L1, NS::LayoutAttribute::height, Axis::dimension },
    { "centerX"_L1, NS::LayoutAttribute::centerX, Axis::x },
    { "centerY"_L1, NS::LayoutAttribute::centerY, Axis::y },
    { "firstBaseline"_L1, NS::LayoutAttribute::firstBaseline, Axis::y },
    { "lastBaseline"_L1, NS::LayoutAttribute::lastBaseline, Axis::y },
};

Attribute attribute(const QString &name, const QString &text)
{
    const auto *const found =
            std::find_if(std::begin(attributes), std::end(attributes),
                         [&](const Attribute &attribute) { return attribute.name == name; });
    if (found == std::end(attributes))
        throw NibFault { NS::NibError::unknownKeyPath, name,
                         u"there is no attribute \"%1\" (constraint \"%2\")"_s.arg(name, text) };
    return *found;
}

NS::LayoutRelation relation(const QString &sign)
{
    if (sign == "<="_L1)
        return NS::LayoutRelation::lessThanOrEqual;
    return sign == ">="_L1 ? NS::LayoutRelation::greaterThanOrEqual : NS::LayoutRelation::equal;
}

NibEntry constraint(const QString &text)
{
    static const QRegularExpression sentence =
            pattern(uR"((\w+)\s*(<=|>=|==?)\s*)"
                    uR"((?:(?:([\d.]+)\s*\*\s*)?([A-Za-z_]\w*)\.(\w+)\s*(?:([+-])\s*([\d.]+))?)"
                    uR"(|([+-]?[\d.]+)))"
                    uR"(\s*(?:@\s*([\d.]+))?)"_s);
    const auto match = sentence.match(text);
    bool isNumber = match.hasMatch();
    const auto number = [&](int group, double otherwise) {
        const QString digits = match.captured(group);
        bool isValid = true;
        const double value = digits.isEmpty() ? otherwise : digits.toDouble(&isValid);
        isNumber = isNumber && isValid;
        return value;
    };
    const QString item = match.captured(4);
    const double multiplier = number(3, item.isEmpty() ? 0.0 : 1.0);
    const double sign = match.captured(6) == "-"_L1 ? -1.0 : 1.0;
    const double constant = item.isEmpty() ? number(8, 0.0) : sign * number(7, 0.0);
    const double priority = number(9, NS::LayoutPriority::required);
    if (!isNumber)
        throw malformed(text, u"a constraint has the form \"leading = superview.leading + 8\", "
                              "\"height = self.width\" or \"width >= 120\""_s);
    if (priority < 1.0 || priority > NS::LayoutPriority::required)
        throw NibFault { NS::NibError::malformed, text,
                         u"the priority in \"%1\" is not from 1 to 1000"_s.arg(text) };
    const Attribute first = attribute(match.captured(1), text);
    const Attribute second =
            item.isEmpty() ? Attribute { {}, NS::LayoutAttribute::notAnAttribute, Axis::dimension }
                           : attribute(match.captured(5), text);
    if (first.axis != second.axis)
        throw NibFault { NS::NibError::malformed, text,
                         u"\"%1\" compares what cannot be compared"_s.arg(text) };
    return NibConstraint {
        first.value, relation(match.captured(2)), multiplier, item, second.value, constant, priority
    };
}

const std::pair<QLatin1StringView, NibEntry (*)(const QString &)> grammars[] = {
    { "outlets"_L1, &outlet },
    { "bindings"_L1, &binding },
    { "actions"_L1, &action },
    { "constraints"_L1, &constraint },
};

const auto *grammar(const QString &property)
{
    return std::find_if(std::begin(grammars), std::end(grammars),
                        [&](const auto &grammar) { return grammar.first == property; });
}

bool isEntry(const QString &property, const QString &text)
{
    try {
        nibEntry(property, text);
        return true;
    } catch (const NibFault &) {
        return false;
    }
}

} // namespace

bool isListBinding(const QObject *object, const QString &key)
{
    return (key == "choices"_L1 || key == "items"_L1)
           && object->metaObject()->indexOfProperty(key.toUtf8().constData()) < 0;
}

QString misspeltNibProperty(const QString &property, const QList<NibText> &values)
{
    for (const auto &known : grammars) {
        const QString &name = known.first;
        if (property == name || editDistance(property.toLower(), name) > 2)
            continue;
        for (const NibText &value : values) {
            const QList<NibText> entries = nibEntries(value);
            if (std::any_of(entries.cbegin(), entries.cend(),
                            [&](const NibText &entry) { return isEntry(name, entry.text); }))
                return name;
        }
    }
    return {};
}

bool holdsNibEntries(const QString &property)
{
    return grammar(property) != std::end(grammars);
}

QList<NibText> nibEntries(const NibText &value)
{
    QList<NibText> entries;
    const QStringList lines = value.text.split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString text = lines[i].trimmed();
        if (text.isEmpty())
            continue;
        XmlPlace place;
        if (value.place.line > 0) {
            place.line = value.place.line + int(i);
            place.column = (i == 0 ? value.place.column : 1) + int(lines[i].indexOf(text));
        }
        entries.append({ text, place });
    }
    return entries;
}

NibEntry nibEntry(const QString &property, const QString &text)
{
    Q_ASSERT(holdsNibEntries(property));
    return grammar(property)->second(text);
}

} // namespace Pellarvine::detail
