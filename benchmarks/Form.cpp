// SPDX-License-Identifier: MIT
// Compares a form of 300 widgets with QUiLoader, which only makes the objects. Checks that the cost
// per scene of a storyboard does not grow with the number of scenes.
#include "Goals.h"

#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSNib.h>
#include <pellarvine/Platform/NSStoryboard.h>
#include <pellarvine/Platform/NSViewController.h>

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <QUiLoader>
#include <QWidget>
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int rows = 100; // of three widgets each

QByteArray property(const QByteArray &name, const QByteArray &kind, const QByteArray &value)
{
    return "     <property name=\"" + name + "\">\n      <" + kind + '>' + value + "</" + kind
           + ">\n     </property>\n";
}

// Laid out as Designer writes it.
QByteArray form()
{
    QByteArray text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\">\n "
                      "<class>Form</class>\n <widget class=\"QWidget\" name=\"form\">\n  <layout "
                      "class=\"QGridLayout\" name=\"grid\">\n";
    const auto add = [&](int row, int column, const QByteArray &className,
                         const QByteArray &properties) {
        const QByteArray place = QByteArray::number(row);
        text += "   <item row=\"" + place + "\" column=\"" + QByteArray::number(column)
                + "\">\n    <widget class=\"" + className + "\" name=\"" + className.toLower()
                + place + "\">\n" + properties + "    </widget>\n   </item>\n";
    };
    for (int row = 0; row < rows; ++row) {
        add(row, 0, "QLabel",
            property("text", "string", "Name " + QByteArray::number(row))
                    + property("alignment", "set", "Qt::AlignRight|Qt::AlignVCenter"));
        add(row, 1, "QLineEdit",
            property("placeholderText", "string", "None") + property("maxLength", "number", "80"));
        add(row, 2, "QCheckBox",
            property("text", "string", "Shown") + property("checked", "bool", "true"));
    }
    return text + "  </layout>\n </widget>\n</ui>\n";
}

void form_Loader(benchmark::State &state)
{
    const QByteArray contents = form();
    for (auto _ : state) {
        QByteArray copy = contents;
        QBuffer buffer(&copy);
        buffer.open(QIODevice::ReadOnly);
        const std::unique_ptr<QWidget> root(QUiLoader().load(&buffer));
        if (!root)
            state.SkipWithError("the form cannot be loaded");
    }
}
BENCHMARK(form_Loader)->Unit(benchmark::kMillisecond);

void form_Nib(benchmark::State &state)
{
    const QByteArray contents = form();
    for (auto _ : state) {
        const NS::Nib nib(contents, u"Form.ui"_s);
        const std::unique_ptr<QWidget> root(nib.instantiate());
        benchmark::DoNotOptimize(root.get());
    }
}
BENCHMARK(form_Nib)->Unit(benchmark::kMillisecond);

// The time of an iteration is the time for one scene.
void form_Scenes(benchmark::State &state)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"Many.storyboard"_s));
    file.open(QIODevice::WriteOnly);
    file.write("<storyboard>\n");
    for (int i = 0; i < state.range(0); ++i) {
        const QByteArray name = 's' + QByteArray::number(i);
        file.write("<scene identifier=\"" + name + "\" class=\"ViewController\"/>\n");
        file.write("<segue identifier=\"again\" class=\"StoryboardSegue\" source=\"" + name
                   + "\" destination=\"" + name + "\"/>\n");
    }
    file.write("</storyboard>\n");
    file.close();
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        const auto storyboard = NS::Storyboard::storyboardWithContentsOfFile(file.fileName());
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
        state.SetIterationTime(time.count() / double(state.range(0)));
        benchmark::DoNotOptimize(storyboard.get());
    }
}
// The number of iterations is fixed, because an iteration takes longer than the time it reports.
BENCHMARK(form_Scenes)->Arg(100)->Iterations(100)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(form_Scenes)->Arg(10000)->Iterations(1)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    // The ratio is about 1.2: the library reads the file, and QUiLoader, which takes only files,
    // reads a part of it again.
    return runBenchmarks(
            argc, argv,
            { { "a form of 300 widgets", "form_Nib", "form_Loader", Goal::timeAtMost, 1.2 },
              { "a scene among 10000", "form_Scenes/10000", "form_Scenes/100", Goal::timeAtMost,
                2.0 } });
}
