// SPDX-License-Identifier: MIT
// The same text in three markup grammars, and texts that are made to be slow to parse.
#include "Goals.h"

#include <pellarvine/Shared/MarkupParser.h>
#include <pellarvine/Shared/Parser.h>

#include <QGuiApplication>
#include <QTextDocument>
#include <benchmark/benchmark.h>
#include <pango/pango.h>
#include <unicode/regex.h>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kib = 1024;
constexpr qsizetype mib = 1024 * kib;

// One of the nine constructs in our grammar, in Pango's, and as close as possible in Markdown.
struct Construct
{
    QString own, pango, markdown;
};

const Construct constructs[] = {
    { u"**%1**"_s, u"<b>%1</b>"_s, u"**%1**"_s },
    { u"//%1//"_s, u"<i>%1</i>"_s, u"*%1*"_s },
    { u"__%1__"_s, u"<u>%1</u>"_s, u"_%1_"_s },
    { u"~~%1~~"_s, u"<s>%1</s>"_s, u"~~%1~~"_s },
    { u"`%1`"_s, u"<tt>%1</tt>"_s, u"`%1`"_s },
    { u"{#1abc9c|%1}"_s, u"<span foreground=\"#1abc9c\">%1</span>"_s, u"**%1**"_s },
    { u"{bg#ff0|%1}"_s, u"<span background=\"#ffff00\">%1</span>"_s, u"*%1*"_s },
    { u"{k1.5|%1}"_s, u"<span letter_spacing=\"1536\">%1</span>"_s, u"**%1**"_s },
    { u"{font:Inter,12|%1}"_s, u"<span font=\"Inter 12\">%1</span>"_s, u"*%1*"_s },
};

// Prose of `size` characters in our grammar, with a construct every 60 characters and a line break
// every 300.
QString ordinaryText(qsizetype size, QString Construct::*grammar = &Construct::own)
{
    static const QString prose = u"and the quick brown fox jumps over the lazy dogs in the yard "_s;
    QString text;
    text.reserve(2 * size);
    for (qsizetype i = 0; i * 60 < size; ++i) {
        const Construct &construct = constructs[i % qsizetype(std::size(constructs))];
        const QString content = u"note %1"_s.arg(i % 977);
        const qsizetype rest = 60 - construct.own.arg(content).size();
        text += (construct.*grammar).arg(content) + prose.first(rest - 1)
                + (i % 5 == 4 ? u'\n' : u' ');
    }
    return text;
}

QString repeated(const QString &unit, qsizetype size)
{
    return unit.repeated(size / unit.size() + 1).first(size);
}

void parse(benchmark::State &state, const QString &text)
{
    const Pellarvine::MarkupParser parser;
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.parse(text));
    state.SetBytesProcessed(int64_t(state.iterations()) * text.size() * 2);
}

// Only finds the matches. Reads no groups and changes no text.
void matchWithIcu(benchmark::State &state, const QString &text)
{
    const Pellarvine::MarkupParser parser;
    const icu::UnicodeString subject(false, reinterpret_cast<const char16_t *>(text.utf16()),
                                     int32_t(text.size()));
    for (auto _ : state) {
        for (const auto &rule : parser.parsers()) {
            UErrorCode status = U_ZERO_ERROR;
            icu::RegexMatcher matcher(
                    icu::UnicodeString(reinterpret_cast<const char16_t *>(rule->regex().utf16())),
                    subject, 0, status);
            int matches = 0;
            while (matcher.find(status))
                ++matches;
            if (U_FAILURE(status) || matches == 0)
                std::abort();
        }
    }
}

void parseWithPango(benchmark::State &state, const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    for (auto _ : state) {
        PangoAttrList *attributes = nullptr;
        char *plain = nullptr;
        if (!pango_parse_markup(utf8.constData(), int(utf8.size()), 0, &attributes, &plain, nullptr,
                                nullptr))
            std::abort();
        pango_attr_list_unref(attributes);
        g_free(plain);
    }
}

void parseMarkdown(benchmark::State &state, const QString &text)
{
    for (auto _ : state) {
        QTextDocument document;
        document.setUndoRedoEnabled(false);
        document.setMarkdown(text);
        benchmark::DoNotOptimize(document.characterCount());
    }
}

struct Hostile
{
    const char *name;
    QString unit;
};

const Hostile hostiles[] = {
    { "colour-openers", u"{#"_s },
    { "colours-without-an-end", u"{#fff|a"_s },
    { "fonts-without-an-end", u"{font:A,1|b"_s },
    { "kernings-without-an-end", u"{k1|"_s },
    { "bold-openers-far-apart", u"**abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz"_s },
    { "stars-only", u"*"_s },
    { "backquotes-only", u"`"_s },
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);

    std::vector<Goal> goals {
        { "markup/against-bare-icu", "markup/parse/1MiB", "markup/icu/1MiB", Goal::timeAtMost,
          0.6 },
        { "markup/against-pango", "markup/parse/1MiB", "markup/pango/1MiB", Goal::timeAtMost, 1.0 },
        { "markup/against-set-markdown", "markup/parse/10KiB", "markup/markdown/10KiB",
          Goal::timeAtMost, 1.0 },
        { "markup/growth", "markup/parse/1MiB", "markup/parse/100KiB", Goal::timeAtMost, 12.0 },
        { "markup/one-line", "markup/parse/1MiB-in-one-line", "markup/parse/1MiB", Goal::timeAtMost,
          3.0 },
    };
    const auto add = [](const std::string &name, auto function, const QString &text) {
        benchmark::RegisterBenchmark(("markup/" + name).c_str(), function, text)
                ->Unit(benchmark::kMicrosecond);
    };
    add("parse/1MiB", parse, ordinaryText(mib));
    add("parse/100KiB", parse, ordinaryText(100 * kib));
    add("parse/1MiB-in-one-line", parse, ordinaryText(mib).replace(u'\n', u' '));
    add("icu/1MiB", matchWithIcu, ordinaryText(mib));
    add("pango/1MiB", parseWithPango, ordinaryText(mib, &Construct::pango));
    // Only 10 KiB, because QTextDocument takes seconds for a megabyte.
    add("parse/10KiB", parse, ordinaryText(10 * kib));
    add("markdown/10KiB", parseMarkdown, ordinaryText(10 * kib, &Construct::markdown));
    QString fonts;
    for (int i = 0; fonts.size() < 100 * kib; ++i)
        fonts += u"{font:%1|b}"_s.arg(i);
    add("parse/100KiB-of-unknown-fonts", parse, fonts);
    for (const auto &[name, unit] : hostiles) {
        const std::string full = std::string("parse/100KiB-of-") + name;
        add(full, parse, repeated(unit, 100 * kib));
        goals.push_back({ std::string("markup/hostile/") + name, "markup/" + full,
                          "markup/parse/100KiB", Goal::timeAtMost, 3.0 });
    }
    return runBenchmarks(argc, argv, goals);
}
