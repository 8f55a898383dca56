// SPDX-License-Identifier: MIT
// Compares panels of 300 wrapping labels of the library and of Qt: construction, first show, one
// step of resizing, painting, and another text for each label.
#include "Goals.h"

#include <pellarvine/Pellarvine/HeightForWidthTextField.h>
#include <pellarvine/Pellarvine/MarkupLabel.h>

#include <QApplication>
#include <QGridLayout>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using Pellarvine::HeightForWidthTextField;
using Pellarvine::MarkupLabel;

namespace {

constexpr int count = 300;
constexpr int columns = 6;

QString plainText(int number)
{
    return u"Message %1: nothing is deleted from the server, and the copies in your own folders "
           "stay where they are until you empty them."_s.arg(number);
}

QLabel *makeLabel(const QString &text, Qt::TextFormat format)
{
    auto *const label = new QLabel;
    label->setTextFormat(format);
    label->setWordWrap(true);
    label->setText(text);
    return label;
}

// Each of the four kinds has functions to make a label and to change its text.

struct Plain
{
    static QWidget *make(int number)
    {
        auto *const field = new HeightForWidthTextField;
        field->setStringValue(plainText(number));
        return field;
    }
    static void change(QWidget *label, int number)
    {
        static_cast<HeightForWidthTextField *>(label)->setStringValue(plainText(number));
    }
};

struct PlainOfQt
{
    static QWidget *make(int number) { return makeLabel(plainText(number), Qt::PlainText); }
    static void change(QWidget *label, int number)
    {
        static_cast<QLabel *>(label)->setText(plainText(number));
    }
};

struct Rich
{
    static QString text(int number)
    {
        return u"**Message %1:** nothing is deleted from the //server//, and the copies in "
               "`your own folders` stay where they are until you {#c0392b|empty} them."_s.arg(
                       number);
    }
    static QWidget *make(int number)
    {
        auto *const label = new MarkupLabel;
        label->setMarkupStringValue(text(number));
        return label;
    }
    static void change(QWidget *label, int number)
    {
        static_cast<MarkupLabel *>(label)->setMarkupStringValue(text(number));
    }
};

struct RichOfQt
{
    static QString text(int number)
    {
        return u"<b>Message %1:</b> nothing is deleted from the <i>server</i>, and the copies in "
               "<tt>your own folders</tt> stay where they are until you "
               "<font color=\"#c0392b\">empty</font> them."_s.arg(number);
    }
    static QWidget *make(int number) { return makeLabel(text(number), Qt::RichText); }
    static void change(QWidget *label, int number)
    {
        static_cast<QLabel *>(label)->setText(text(number));
    }
};

template <typename Kind>
class Panel
{
public:
    Panel()
    {
        auto *const grid = new QGridLayout(&m_window);
        for (int i = 0; i < count; ++i) {
            m_labels.append(Kind::make(i));
            grid->addWidget(m_labels.constLast(), i / columns, i % columns);
        }
    }

    void show()
    {
        m_window.resize(1200, 4000);
        m_window.show();
        QApplication::processEvents();
    }

    void resize(int width) { m_window.resize(width, 4000); }

    void paint(QImage &image) { m_window.render(&image); }

    void change(int offset)
    {
        for (int i = 0; i < count; ++i)
            Kind::change(m_labels.at(i), i + offset);
        QApplication::processEvents();
    }

private:
    QWidget m_window;
    QList<QWidget *> m_labels;
};

template <typename Kind>
void make(benchmark::State &state)
{
    for (auto _ : state)
        const Panel<Kind> panel;
}

template <typename Kind>
void show(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto panel = std::make_unique<Panel<Kind>>();
        state.ResumeTiming();
        panel->show();
        state.PauseTiming();
        panel.reset();
        state.ResumeTiming();
    }
}

template <typename Kind>
void resize(benchmark::State &state)
{
    Panel<Kind> panel;
    panel.show();
    int step = 0;
    for (auto _ : state) {
        step = (step + 1) % 400;
        panel.resize(1000 + step);
    }
}

template <typename Kind>
void paint(benchmark::State &state)
{
    Panel<Kind> panel;
    panel.show();
    QImage image(1200, 4000, QImage::Format_RGB32);
    for (auto _ : state)
        panel.paint(image);
}

template <typename Kind>
void change(benchmark::State &state)
{
    Panel<Kind> panel;
    panel.show();
    int offset = 0;
    for (auto _ : state)
        panel.change(++offset);
}

template <typename Kind>
void registerKind(const std::string &name)
{
    const auto add = [&](const char *work, void (*function)(benchmark::State &)) {
        benchmark::RegisterBenchmark(("labels/" + name + '-' + work).c_str(), function)
                ->Unit(benchmark::kMillisecond);
    };
    add("make", &make<Kind>);
    add("show", &show<Kind>);
    add("resize", &resize<Kind>);
    add("paint", &paint<Kind>);
    add("change", &change<Kind>);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    registerKind<Plain>("plain");
    registerKind<PlainOfQt>("plain-qt");
    registerKind<Rich>("rich");
    registerKind<RichOfQt>("rich-qt");
    // Most of the painting time is for glyphs, which Qt's labels draw in the same way.
    const std::pair<std::string, double> limits[] = {
        { "plain-make", 0.8 },  { "plain-show", 0.6 },   { "plain-resize", 0.5 },
        { "plain-paint", 0.9 }, { "plain-change", 0.7 }, { "rich-make", 0.85 },
        { "rich-show", 0.35 },  { "rich-resize", 0.15 }, { "rich-paint", 0.9 },
        { "rich-change", 0.4 },
    };
    std::vector<Goal> goals;
    for (const auto &[work, limit] : limits) {
        std::string baseline = work;
        baseline.insert(work.find('-'), "-qt");
        goals.push_back({ .name = "labels/" + work,
                          .subject = "labels/" + work,
                          .baseline = "labels/" + baseline,
                          .limit = limit });
    }
    return runBenchmarks(argc, argv, goals);
}
