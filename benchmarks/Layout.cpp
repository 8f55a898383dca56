// SPDX-License-Identifier: MIT
// Checks that the solver's cost per view does not grow from 10 to 1000 views. Compares a window of
// 100 widgets with constraints with Qt's nested grids, and forms of 500 and 1000 rows with
// QFormLayout.
#include "Goals.h"
#include "Views.h"

#include <pellarvine/Platform/NSLayoutAnchor.h>
#include <pellarvine/Platform/NSView.h>

#include <QApplication>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QWidget>
#include <benchmark/benchmark.h>

#include <algorithm>

using namespace Pellarvine;
using namespace NS;

namespace {

constexpr double spacing = 6.0;
constexpr int columns = 10;

class Cell : public QWidget
{
public:
    using QWidget::QWidget;
    QSize sizeHint() const override { return { 40, 20 }; }
    QSize minimumSizeHint() const override { return { 10, 10 }; }
};

void arrangeInGrids(QWidget *panel, int rows)
{
    auto *const outer = new QGridLayout(panel);
    outer->setContentsMargins(int(spacing), int(spacing), int(spacing), int(spacing));
    outer->setSpacing(int(spacing));
    for (int row = 0; row < rows; ++row) {
        auto *const inner = new QGridLayout;
        inner->setSpacing(int(spacing));
        for (int column = 0; column < columns; ++column) {
            inner->addWidget(new Cell(panel), 0, column);
            inner->setColumnStretch(column, 1);
        }
        outer->addLayout(inner, row, 0);
        outer->setRowStretch(row, 1);
    }
}

void arrangeByConstraints(QWidget *panel, int rows)
{
    QList<std::shared_ptr<LayoutConstraint>> constraints;
    QList<QWidget *> cells(rows * columns);
    std::ranges::generate(cells, [panel] { return new Cell(panel); });
    for (int i = 0; i < cells.size(); ++i) {
        QWidget *const cell = cells[i];
        QWidget *const left = i % columns > 0 ? cells[i - 1] : nullptr;
        QWidget *const above = i >= columns ? cells[i - columns] : nullptr;
        constraints += leadingAnchor(cell).constraintEqualToAnchor(
                left ? trailingAnchor(left) : leadingAnchor(panel), spacing);
        constraints += topAnchor(cell).constraintEqualToAnchor(
                above ? bottomAnchor(above) : topAnchor(panel), spacing);
        if (i > 0) {
            constraints +=
                    widthAnchor(cell).constraintEqualToAnchor(widthAnchor(cells.constFirst()));
            constraints +=
                    heightAnchor(cell).constraintEqualToAnchor(heightAnchor(cells.constFirst()));
        }
    }
    constraints += trailingAnchor(panel).constraintEqualToAnchor(trailingAnchor(cells[columns - 1]),
                                                                 spacing);
    constraints += bottomAnchor(panel).constraintEqualToAnchor(bottomAnchor(cells.last()), spacing);
    LayoutConstraint::activateConstraints(constraints);
}

// One step of resizing a window, without painting.
template <void (*arrange)(QWidget *, int)>
void resizeWindow(benchmark::State &state)
{
    QWidget window;
    auto *const panel = new QWidget(&window);
    arrange(panel, 10);
    window.resize(1200, 800);
    window.show();
    QApplication::processEvents();
    int step = 0;
    for (auto _ : state) {
        step = (step + 1) % 400;
        panel->resize(600 + step, 400 + step / 2);
    }
    if (panel->findChildren<Cell *>().constLast()->geometry().bottomRight().x()
        < panel->width() - 20)
        state.SkipWithError("the cells do not fill the panel");
}

// Shows a panel that is much smaller than its cells, or has room for them.
template <bool isSmall>
void showPanel(benchmark::State &state)
{
    for (auto _ : state) {
        QWidget window;
        auto *const panel = new QWidget(&window);
        if (!isSmall)
            panel->resize(2000, 2000);
        arrangeByConstraints(panel, 50);
        window.show();
        QApplication::processEvents();
    }
}

// A form of labels and fields, by QFormLayout or by constraints. With constraints, each label is as
// wide as the first one (`tied`), or has its own width (`untied`).
enum class FormKind {
    qt,
    untied,
    tied,
};

class Form
{
public:
    Form(FormKind kind, int count)
    {
        if (kind == FormKind::qt)
            m_form = new QFormLayout(&m_window);
        QList<std::shared_ptr<LayoutConstraint>> constraints;
        QWidget *firstLabel = nullptr;
        QWidget *above = nullptr;
        for (int i = 0; i < count; ++i) {
            auto *const label = new QLabel(QStringLiteral("Row %1").arg(i), &m_window);
            auto *const field = new QLineEdit(&m_window);
            if (m_form) {
                m_form->addRow(label, field);
                continue;
            }
            constraints +=
                    leadingAnchor(label).constraintEqualToAnchor(leadingAnchor(&m_window), spacing);
            constraints +=
                    leadingAnchor(field).constraintEqualToAnchor(trailingAnchor(label), spacing);
            constraints += trailingAnchor(field).constraintEqualToAnchor(trailingAnchor(&m_window),
                                                                         -spacing);
            constraints +=
                    firstBaselineAnchor(label).constraintEqualToAnchor(firstBaselineAnchor(field));
            constraints += topAnchor(field).constraintEqualToAnchor(
                    above ? bottomAnchor(above) : topAnchor(&m_window), spacing);
            if (i == count / 2)
                m_gap = constraints.constLast();
            if (kind == FormKind::tied && firstLabel)
                constraints += widthAnchor(label).constraintEqualToAnchor(widthAnchor(firstLabel));
            if (!firstLabel)
                firstLabel = label;
            above = field;
        }
        if (m_form)
            return;
        constraints +=
                bottomAnchor(above).constraintEqualToAnchor(bottomAnchor(&m_window), -spacing);
        LayoutConstraint::activateConstraints(constraints);
    }

    void show()
    {
        m_window.show();
        QApplication::processEvents();
    }

    void changeConstant()
    {
        m_gap->setConstant(m_gap->constant() > 20.0 ? spacing : m_gap->constant() + 1.0);
        QApplication::processEvents();
    }

    void resize()
    {
        m_step = (m_step + 1) % 200;
        m_window.resize(600 + m_step, m_window.height());
        QApplication::processEvents();
    }

private:
    QWidget m_window;
    QFormLayout *m_form = nullptr;
    std::shared_ptr<LayoutConstraint> m_gap;
    int m_step = 0;
};

template <FormKind kind>
void showForm(benchmark::State &state)
{
    for (auto _ : state) {
        Form form(kind, int(state.range(0)));
        form.show();
    }
}

template <FormKind kind, void (Form::*change)()>
void changeForm(benchmark::State &state)
{
    Form form(kind, int(state.range(0)));
    form.show();
    for (auto _ : state)
        (form.*change)();
}

BENCHMARK(solveViews<OwnSolver, false>)->Name("layout/solve-chain")->Apply(viewCounts);
BENCHMARK(resizeViews<OwnSolver, false>)->Name("layout/resolve-chain")->Apply(viewCounts);
BENCHMARK(solveViews<OwnSolver, true>)->Name("layout/solve-grid")->Apply(viewCounts);
BENCHMARK(resizeViews<OwnSolver, true>)->Name("layout/resolve-grid")->Apply(viewCounts);
BENCHMARK(resizeWindow<&arrangeByConstraints>)
        ->Name("layout/resize-window")
        ->Unit(benchmark::kMicrosecond);
BENCHMARK(resizeWindow<&arrangeInGrids>)
        ->Name("layout/resize-window-grids")
        ->Unit(benchmark::kMicrosecond);

BENCHMARK(showPanel<true>)->Name("layout/show-small-panel")->Unit(benchmark::kMillisecond);
BENCHMARK(showPanel<false>)->Name("layout/show-large-panel")->Unit(benchmark::kMillisecond);

void formSizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(500)->Unit(benchmark::kMillisecond);
}

void formGrowth(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(500)->Arg(1000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(showForm<FormKind::qt>)->Name("layout/show-qform")->Apply(formSizes);
BENCHMARK(showForm<FormKind::untied>)->Name("layout/show-form")->Apply(formGrowth);
BENCHMARK(showForm<FormKind::tied>)->Name("layout/show-tied-form")->Apply(formGrowth);
BENCHMARK(changeForm<FormKind::untied, &Form::changeConstant>)
        ->Name("layout/form-constant")
        ->Apply(formSizes);
BENCHMARK(changeForm<FormKind::untied, &Form::resize>)
        ->Name("layout/form-resize")
        ->Apply(formSizes);
BENCHMARK(changeForm<FormKind::tied, &Form::changeConstant>)
        ->Name("layout/tied-form-constant")
        ->Apply(formSizes);
BENCHMARK(changeForm<FormKind::tied, &Form::resize>)
        ->Name("layout/tied-form-resize")
        ->Apply(formSizes);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    // Ten times the views. Quadratic growth would be a factor of 100.
    const auto growth = [](const std::string &work) {
        return Goal { .name = "layout/" + work + "-growth",
                      .subject = "layout/" + work + "/1000",
                      .baseline = "layout/" + work + "/100",
                      .limit = 13.0 };
    };
    const auto ratio = [](const std::string &name, const std::string &subject,
                          const std::string &baseline, double limit) {
        return Goal { .name = "layout/" + name,
                      .subject = "layout/" + subject,
                      .baseline = "layout/" + baseline,
                      .limit = limit };
    };
    return runBenchmarks(
            argc, argv,
            {
                    growth("solve-chain"),
                    growth("resolve-chain"),
                    growth("solve-grid"),
                    growth("resolve-grid"),
                    { .name = "layout/resize-window",
                      .subject = "layout/resize-window",
                      .baseline = "layout/resize-window-grids",
                      .limit = 1.0 },
                    ratio("show-small-panel", "show-small-panel", "show-large-panel", 1.5),
                    ratio("show-form", "show-form/500", "show-qform/500", 1.5),
                    ratio("show-tied-form", "show-tied-form/500", "show-qform/500", 1.5),
                    ratio("form-constant", "form-constant/500", "form-resize/500", 1.0),
                    ratio("tied-form-constant", "tied-form-constant/500", "tied-form-resize/500",
                          1.0),
                    ratio("show-form-growth", "show-form/1000", "show-form/500", 2.3),
                    ratio("show-tied-form-growth", "show-tied-form/1000", "show-tied-form/500",
                          2.3),
            });
}
