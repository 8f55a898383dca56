// SPDX-License-Identifier: MIT
#include "Command.h"
#include "Commands.h"
#include "FileDescriptor.h"

#include <pellarvine/Platform/NSAttributedString+Text.h>
#include <pellarvine/Platform/NSFontManager.h>
#include <pellarvine/Shared/Contrast.h>
#include <pellarvine/Shared/MarkupParser.h>
#include <pellarvine/Shared/NSColor+Color.h>

#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>

#include <cstdio>

using namespace Qt::StringLiterals;

using namespace Pellarvine;

namespace {

using Run = NS::AttributedString::Run;

// Invalid UTF-8 becomes U+FFFD. A byte order mark is an ordinary character, so the output of a line
// does not depend on its place.
QString readText(const QByteArray &path)
{
    const FileDescriptor descriptor = openForReading(path);
    QFile file;
    const auto fail = [&] {
        throw CommandError(ExitStatus::systemError, (path == "-" ? "standard input" : path) + ": "
                                                            + file.errorString().toLocal8Bit());
    };
    if (!file.open(descriptor, QIODevice::ReadOnly))
        fail();
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        fail();
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return decoder(bytes);
}

QJsonObject fontObject(const QFont &font)
{
    return {
        { u"family"_s, font.family() },
        { u"pointSize"_s, NS::FontManager::pointSize(font) },
        { u"weight"_s, int(font.weight()) },
        { u"italic"_s, font.style() != QFont::StyleNormal },
    };
}

QJsonObject attributesObject(const NS::Attributes &attributes)
{
    QJsonObject object;
    for (const auto &[key, value] : attributes) {
        if (key == NS::FontAttributeName)
            object[u"font"_s] = fontObject(value.value<QFont>());
        else if (key == NS::ForegroundColorAttributeName)
            object[u"foregroundColor"_s] = hexStringWithAlpha(value.value<NS::Color>());
        else if (key == NS::BackgroundColorAttributeName)
            object[u"backgroundColor"_s] = hexStringWithAlpha(value.value<NS::Color>());
        else if (key == NS::UnderlineStyleAttributeName)
            object[u"underlineStyle"_s] = value.toInt();
        else if (key == NS::StrikethroughStyleAttributeName)
            object[u"strikethroughStyle"_s] = value.toInt();
        else if (key == NS::KernAttributeName)
            object[u"kern"_s] = value.toDouble(); // null if it is not finite
    }
    return object;
}

QByteArray json(const NS::AttributedString &text)
{
    // Joins runs without a visible difference.
    QList<std::pair<Run, QJsonObject>> runs;
    for (const Run &run : text.runs()) {
        const QJsonObject object = attributesObject(run.attributes);
        if (!runs.isEmpty() && runs.constLast().second == object)
            runs.last().first.length += run.length;
        else
            runs.append({ run, object });
    }
    QJsonArray array;
    for (auto &[run, object] : runs) {
        object[u"location"_s] = run.location;
        object[u"length"_s] = run.length;
        array.append(object);
    }
    // A QJsonObject would put the runs first.
    const auto compact = [](const QJsonArray &values) {
        return QJsonDocument(values).toJson(QJsonDocument::Compact);
    };
    const QByteArray string = compact({ text.string() });
    return "{\"string\":" + string.sliced(1, string.size() - 2) + ",\"runs\":" + compact(array)
           + '}';
}

QByteArray htmlElement(const NS::AttributedString &text)
{
    return "<div style=\"white-space:pre-wrap\">" + NS::html(text).toUtf8() + "</div>";
}

// Control characters of the text are shown as the replacement character: a terminal would execute
// them.
QByteArray printable(QStringView text)
{
    QString result = text.toString().remove(u'\r');
    for (QChar &unit : result) {
        const bool isLayout = unit == u'\n' || unit == u'\t';
        if (unit.category() == QChar::Other_Control && !isLayout)
            unit = QChar::ReplacementCharacter;
    }
    return result.toUtf8();
}

QByteArray colorCode(const char *ground, const NS::Color &color)
{
    const QColor seen = color.toQColor();
    return QByteArray(ground) + ";2;" + QByteArray::number(seen.red()) + ';'
           + QByteArray::number(seen.green()) + ';' + QByteArray::number(seen.blue());
}

// The base colour is that of the terminal, because black is invisible on some. Terminals have no
// opacity. Most are dark, so translucent colours are mixed with black.
QByteArray ansi(const NS::AttributedString &text, const MarkupParser &parser)
{
    QByteArray result;
    for (const Run &run : text.runs()) {
        const NS::Attributes &attributes = run.attributes;
        const QFont font = attributes.value(NS::FontAttributeName).value<QFont>();
        const auto foreground =
                attributes.value(NS::ForegroundColorAttributeName).value<NS::Color>();
        const QVariant background = attributes.value(NS::BackgroundColorAttributeName);
        const NS::Color clear(RGBA { 0, 0, 0, 0 });
        const NS::Color behind = background.isValid() ? background.value<NS::Color>() : clear;
        const NS::Color ground = seenOn(NS::Color::black(), behind);
        QByteArrayList codes;
        if (font.weight() > parser.font().weight())
            codes.append("1");
        if (font.italic())
            codes.append("3");
        if (attributes.value(NS::UnderlineStyleAttributeName).toInt() != 0)
            codes.append("4");
        if (attributes.value(NS::StrikethroughStyleAttributeName).toInt() != 0)
            codes.append("9");
        if (foreground != parser.color())
            codes.append(colorCode("38", seenOn(ground, foreground)));
        if (behind.rgba().alpha > 0)
            codes.append(colorCode("48", ground));
        const QByteArray content =
                printable(QStringView(text.string()).sliced(run.location, run.length));
        if (codes.isEmpty())
            result += content;
        else
            result += "\x1b[" + codes.join(';') + 'm' + content + "\x1b[0m";
    }
    return result;
}

} // namespace

void runMarkup(const QByteArrayList &arguments)
{
    CommandLine options(
            "markup",
            u"Turns inline markup into styled text and prints it as JSON: the text without its\n"
            "markup, and runs of attributes in UTF-16 units. Reads UTF-8; without FILE, or with "
            "-,\n"
            "standard input."_s);
    const QCommandLineOption lines(u"lines"_s,
                                   u"Parse each line separately, and print a line for each."_s);
    const QCommandLineOption asHtml(u"html"_s, u"Print HTML."_s);
    const QCommandLineOption asAnsi(u"ansi"_s,
                                    u"Print the text with the styles that a terminal can show."_s);
    options.addOptions({ lines, asHtml, asAnsi });
    options.addPositionalArgument(u"FILE"_s, u"The markup."_s, u"[FILE]"_s);
    options.parse(arguments);
    if (options.operands().size() > 1)
        throw CommandError(ExitStatus::badUsage, "markup: more than one FILE");
    if (options.isSet(asHtml) && options.isSet(asAnsi))
        throw CommandError(ExitStatus::badUsage, "markup: use either --html or --ansi");

    const QString text = readText(options.operands().value(0, "-"));
    // Fonts need an application, and no display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    char program[] = "pellarvine";
    char *programArguments[] = { program, nullptr };
    int count = 1;
    const QGuiApplication application(count, programArguments);
    const MarkupParser parser;
    const auto print = [&](const QString &markup) {
        const NS::AttributedString styled = parser.parse(markup);
        const QByteArray line = options.isSet(asHtml)   ? htmlElement(styled)
                                : options.isSet(asAnsi) ? ansi(styled, parser)
                                                        : json(styled);
        std::fwrite(line.constData(), 1, std::size_t(line.size()), stdout);
        if (!line.endsWith('\n'))
            std::fputc('\n', stdout);
    };
    if (!options.isSet(lines)) {
        print(text);
        return;
    }
    // Lines end with LF or CR LF; the last one may lack its end.
    QStringView rest(text);
    while (!rest.isEmpty()) {
        const qsizetype end = rest.indexOf(u'\n');
        const bool hasReturn = end > 0 && rest.at(end - 1) == u'\r';
        print((end < 0 ? rest : rest.first(hasReturn ? end - 1 : end)).toString());
        rest = end < 0 ? QStringView() : rest.sliced(end + 1);
    }
}
