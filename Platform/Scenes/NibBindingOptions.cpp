// SPDX-License-Identifier: MIT
#include "Scenes/NibBindingOptions.h"

#include "KeyValue/BindingFormat.h"
#include "Scenes/NibFile.h"

#include <QRegularExpression>
#include <QStringList>

#include <optional>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

[[noreturn]] void fail(const QString &option, const QString &message, const QString &entry)
{
    throw NibFault { NS::NibError::malformed, option,
                     u"%1 (binding \"%2\")"_s.arg(message, entry) };
}

// False if there is no such option, or if it has an argument too many or too few.
bool take(const QString &name, const std::optional<QString> &argument, NibBindingOptions *options)
{
    bool *const flag = name == "commit"_L1     ? &options->commits
                       : name == "required"_L1 ? &options->isRequired
                       : name == "popover"_L1  ? &options->hasPopover
                       : name == "oneWay"_L1   ? &options->isOneWay
                                               : nullptr;
    QString *const text = name == "format"_L1        ? &options->format
                          : name == "placeholder"_L1 ? &options->placeholder
                          : name == "title"_L1       ? &options->title
                          : name == "tag"_L1         ? &options->tag
                                                     : nullptr;
    if (flag && !argument)
        *flag = true;
    else if (text && argument)
        *text = *argument;
    else
        return false;
    return true;
}

} // namespace

NibBindingOptions nibBindingOptions(const QString &text, const QString &entry)
{
    static const QRegularExpression option(
            uR"re(\G\s*\|\s*(\w+)\s*(?:\(\s*"([^"]*)"\s*\))?\s*)re"_s);
    NibBindingOptions options;
    QStringList names;
    qsizetype end = 0;
    while (end < text.size()) {
        const auto match = option.match(text, end);
        const auto argument =
                match.hasCaptured(2) ? std::optional(match.captured(2)) : std::nullopt;
        if (!match.hasMatch() || !take(match.captured(1), argument, &options)) {
            const QString first = text.sliced(end).section(u'|', 1, 1).trimmed();
            const QString wrong = first.isEmpty() ? u"|"_s : first;
            fail(wrong,
                 u"\"%1\" is none of the options of a binding: commit, required, popover, "
                 "oneWay, format(\"%.1f\"), placeholder(\"None\"), title(\"name\"), tag(\"code\")"_s
                         .arg(wrong),
                 entry);
        }
        if (names.contains(match.captured(1)))
            fail(match.captured(1), u"the option \"%1\" is there twice"_s.arg(match.captured(1)),
                 entry);
        names.append(match.captured(1));
        end = match.capturedEnd();
    }
    if (!options.format.isEmpty() && !BindingFormat::parsed(options.format))
        fail(options.format, u"\"%1\" is no format with one conversion"_s.arg(options.format),
             entry);
    return options;
}

NS::BindingOptions bindingOptions(const NibBindingOptions &options)
{
    NS::BindingOptions result;
    if (options.commits)
        result.commit = NS::BindingOptions::whenEditingFinishes;
    if (options.isOneWay)
        result.direction = NS::BindingOptions::toControl;
    result.negate = options.negates;
    result.required = options.isRequired;
    result.popover = options.hasPopover;
    result.format = options.format;
    result.noSelectionPlaceholder = options.placeholder;
    return result;
}

} // namespace Pellarvine::detail
