// SPDX-License-Identifier: MIT
// Compares 300 controls with as many of Qt's corresponding controls: construction, first show, and
// one step of resizing.
#include "Goals.h"

#include <pellarvine/Pellarvine/BorderView.h>
#include <pellarvine/Pellarvine/FullWidthSegmentedControl.h>
#include <pellarvine/Platform/NSColorPanel.h>

#include <QApplication>
#include <QColorDialog>
#include <QFrame>
#include <QTabBar>
#include <benchmark/benchmark.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int count = 300;
const QStringList labels = { u"Day"_s, u"Week"_s, u"Month"_s, u"Year"_s };

struct Segments
{
    static QWidget *make(QWidget *parent)
    {
        auto *const control = new Pellarvine::FullWidthSegmentedControl(parent);
        control->setLabels(labels);
        return control;
    }
};

struct Tabs
{
    static QWidget *make(QWidget *parent)
    {
        auto *const bar = new QTabBar(parent);
        for (const QString &label : labels)
            bar->addTab(label);
        return bar;
    }
};

struct Border
{
    static QWidget *make(QWidget *parent)
    {
        auto *const view = new Pellarvine::BorderView(parent);
        view->setHasTopBorder(true);
        view->setHasBottomBorder(true);
        return view;
    }
};

struct Frame
{
    static QWidget *make(QWidget *parent)
    {
        auto *const frame = new QFrame(parent);
        frame->setFrameStyle(QFrame::Box | QFrame::Plain);
        frame->setAutoFillBackground(true);
        return frame;
    }
};

template <typename Kind>
class Panel : public QWidget
{
public:
    Panel()
    {
        for (int i = 0; i < count; ++i)
            m_controls.append(Kind::make(this));
        setWidth(300);
    }

    void setWidth(int width)
    {
        for (int i = 0; i < count; ++i)
            m_controls[i]->setGeometry(320 * (i % 3), 8 * (i / 3), width, 28);
    }

private:
    QList<QWidget *> m_controls;
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
        panel->resize(960, 840);
        state.ResumeTiming();
        panel->show();
        QApplication::processEvents();
        state.PauseTiming();
        panel.reset();
        state.ResumeTiming();
    }
}

template <typename Kind>
void resize(benchmark::State &state)
{
    Panel<Kind> panel;
    panel.resize(960, 840);
    panel.show();
    int step = 0;
    for (auto _ : state) {
        step = (step + 1) % 100;
        panel.setWidth(220 + step);
    }
}

// The first opening, which constructs the content.
void makePicker(benchmark::State &state)
{
    for (auto _ : state) {
        const std::unique_ptr<NS::ColorPanel> panel(NS::ColorPanel::sharedColorPanel());
        panel->orderFront();
        QApplication::processEvents();
    }
}

void makePickerOfQt(benchmark::State &state)
{
    for (auto _ : state) {
        QColorDialog dialog;
        dialog.setOption(QColorDialog::DontUseNativeDialog);
        dialog.show();
        QApplication::processEvents();
    }
}

template <typename Kind>
void registerKind(const std::string &name)
{
    const auto add = [&](const char *work, void (*function)(benchmark::State &)) {
        benchmark::RegisterBenchmark(("controls/" + name + '-' + work).c_str(), function)
                ->Unit(benchmark::kMillisecond);
    };
    add("make", &make<Kind>);
    add("show", &show<Kind>);
    add("resize", &resize<Kind>);
}

Goal goal(const std::string &kind, const std::string &work, double limit)
{
    return { .name = "controls/" + kind + '-' + work,
             .subject = "controls/" + kind + '-' + work,
             .baseline = "controls/" + kind + "-qt-" + work,
             .limit = limit };
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    registerKind<Segments>("segments");
    registerKind<Tabs>("segments-qt");
    registerKind<Border>("border");
    registerKind<Frame>("border-qt");
    benchmark::RegisterBenchmark("controls/picker-open", &makePicker)
            ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("controls/picker-qt-open", &makePickerOfQt)
            ->Unit(benchmark::kMillisecond);
    return runBenchmarks(argc, argv,
                         { goal("segments", "make", 1.0), goal("segments", "show", 1.0),
                           goal("segments", "resize", 0.7), goal("border", "make", 1.0),
                           goal("border", "show", 0.9), goal("picker", "open", 1.5) });
}
