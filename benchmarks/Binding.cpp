// SPDX-License-Identifier: MIT
#include "Goals.h"

#include <pellarvine/Platform/NSComputedBinding.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>
#include <pellarvine/Shared/Binding.h>
#include <pellarvine/Shared/MemberBinding.h>
#include <pellarvine/Shared/Observer.h>
#include <pellarvine/Shared/TransformableBinding.h>

#include <QMetaProperty>
#include <QObject>
#include <benchmark/benchmark.h>

#include <deque>
#include <functional>
#include <malloc.h>
#include <optional>
#include <utility>
#include <vector>

using namespace Pellarvine;
using namespace Qt::StringLiterals;

namespace {

class Model : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(Model *child READ child WRITE setChild NOTIFY childChanged)

public:
    int value() const { return m_value; }
    void setValue(int value)
    {
        if (m_value == value)
            return;
        m_value = value;
        Q_EMIT valueChanged(value);
    }

    Model *child() const { return m_child; }
    void setChild(Model *child)
    {
        if (m_child == child)
            return;
        m_child = child;
        Q_EMIT childChanged();
    }

Q_SIGNALS:
    void valueChanged(int value);
    void childChanged();

private:
    int m_value = 0;
    Model *m_child = nullptr;
};

// The code that a program needs by hand to bind two properties by their names.
class Relay : public QObject
{
    Q_OBJECT

public:
    using Function = std::function<QVariant(const QVariant &)>;

    Relay(QObject *source, QObject *target, bool *guard = nullptr, Function function = {})
        : m_source(source)
        , m_target(target)
        , m_from(property(source))
        , m_to(property(target))
        , m_guard(guard)
        , m_function(std::move(function))
    {
        const int slot = metaObject()->indexOfSlot("relay()");
        connect(source, m_from.notifySignal(), this, metaObject()->method(slot));
    }

public Q_SLOTS:
    void relay()
    {
        if (m_guard && std::exchange(*m_guard, true))
            return;
        if (m_function)
            m_to.write(m_target, m_function(m_from.read(m_source)));
        else
            m_to.write(m_target, m_from.read(m_source));
        if (m_guard)
            *m_guard = false;
    }

private:
    static QMetaProperty property(const QObject *object)
    {
        const QMetaObject *const metaObject = object->metaObject();
        return metaObject->property(metaObject->indexOfProperty("value"));
    }

    QObject *m_source;
    QObject *m_target;
    QMetaProperty m_from;
    QMetaProperty m_to;
    bool *m_guard;
    Function m_function;
};

// Changes `model` in each iteration, and checks that `other` has followed.
void change(benchmark::State &state, Model &model, const Model &other, int offset = 0)
{
    int value = model.value();
    for (auto _ : state)
        model.setValue(++value);
    if (other.value() != value + offset)
        state.SkipWithError("the other end has not followed");
}

void signalToSlot(benchmark::State &state)
{
    Model source;
    Model target;
    QObject::connect(&source, &Model::valueChanged, &target, &Model::setValue);
    change(state, source, target);
}

void signalToSlotPair(benchmark::State &state)
{
    Model source;
    Model target;
    QObject::connect(&source, &Model::valueChanged, &target, &Model::setValue);
    QObject::connect(&target, &Model::valueChanged, &source, &Model::setValue);
    change(state, source, target);
}

void members(benchmark::State &state)
{
    Model source;
    Model target;
    const auto value = property(&Model::value, &Model::setValue, &Model::valueChanged);
    const MemberBinding binding(&source, value, &target, value);
    change(state, source, target);
}

void byNameRelay(benchmark::State &state)
{
    Model source;
    Model target;
    const Relay relay(&source, &target);
    change(state, source, target);
}

void transformingByNameRelay(benchmark::State &state)
{
    Model source;
    Model target;
    const Relay relay(&source, &target, nullptr,
                      [](const QVariant &value) { return value.toInt() + 1; });
    change(state, source, target, 1);
}

void twoWayByNameRelay(benchmark::State &state)
{
    Model source;
    Model target;
    bool guard = false;
    const Relay forward(&source, &target, &guard);
    const Relay reverse(&target, &source, &guard);
    change(state, source, target);
}

void oneWay(benchmark::State &state)
{
    Model source;
    Model target;
    const Binding binding(&source, u"value"_s, &target, u"value"_s, false);
    change(state, source, target);
}

void twoWay(benchmark::State &state)
{
    Model source;
    Model target;
    const Binding binding(&source, u"value"_s, &target, u"value"_s);
    change(state, source, target);
}

void transformed(benchmark::State &state)
{
    Model source;
    Model target;
    const Binding binding(&source, u"value"_s, &target, u"value"_s, false,
                          [](const QVariant &value) { return value.toInt() + 1; });
    change(state, source, target, 1);
}

void typed(benchmark::State &state)
{
    Model source;
    Model target;
    const TransformableBinding<int, int> binding(&source, u"value"_s, &target, u"value"_s, false);
    change(state, source, target);
}

void typedTransformed(benchmark::State &state)
{
    Model source;
    Model target;
    const TransformableBinding<int, int> binding(&source, u"value"_s, &target, u"value"_s, false,
                                                 [](int value) { return value + 1; });
    change(state, source, target, 1);
}

void typedTransformedTwoWay(benchmark::State &state)
{
    Model source;
    Model target;
    const TransformableBinding<int, int> binding(
            &source, u"value"_s, &target, u"value"_s, true, [](int value) { return value + 1; },
            [](int value) { return value - 1; });
    change(state, source, target, 1);
}

// Both key paths have state.range(0) objects before the property.
void dotted(benchmark::State &state)
{
    std::vector<Model> sources(std::size_t(state.range(0)));
    std::vector<Model> targets(std::size_t(state.range(0)));
    QString path = u"value"_s;
    for (std::size_t i = 1; i < sources.size(); ++i) {
        sources[i - 1].setChild(&sources[i]);
        targets[i - 1].setChild(&targets[i]);
        path.prepend(u"child."_s);
    }
    const Binding binding(&sources.front(), path, &targets.front(), path, false);
    change(state, sources.back(), targets.back());
}

// Makes and destroys state.range(0) bindings of one object to as many others.
void construction(benchmark::State &state)
{
    const auto count = std::size_t(state.range(0));
    Model source;
    std::vector<Model> targets(count);
    std::vector<std::optional<Binding>> bindings(count);
    for (auto _ : state) {
        for (std::size_t i = 0; i < count; ++i)
            bindings[i].emplace(&source, u"value"_s, &targets[i], u"value"_s);
        for (auto &binding : bindings)
            binding.reset();
    }
}

void notification(benchmark::State &state)
{
    const auto count = std::size_t(state.range(0));
    Model source;
    std::size_t calls = 0;
    std::vector<std::optional<Observer>> observers(count);
    for (auto &observer : observers)
        observer.emplace(&source, u"value"_s, false, [&calls](const QVariant &) { ++calls; });
    int value = 0;
    for (auto _ : state)
        source.setValue(++value);
    if (calls != count * std::size_t(state.iterations()))
        state.SkipWithError("not every observer was told");
}

// Makes state.range(0) computed bindings, changes their common source once, and destroys them.
void computed(benchmark::State &state)
{
    const auto count = std::size_t(state.range(0));
    Model first;
    Model second;
    std::vector<Model> targets(count);
    int value = 0;
    for (auto _ : state) {
        for (Model &target : targets)
            NS::bind(&target, u"value"_s, { { &first, u"value"_s }, { &second, u"value"_s } },
                     [](int one, int other) { return one + other; });
        first.setValue(++value);
        for (Model &target : targets)
            NS::unbind(&target, u"value"_s);
    }
    if (targets.back().value() != value)
        state.SkipWithError("the last target has not followed");
}

// The bytes of the heap that a binding between two objects takes, with its connections in Qt, as
// the allocator counts them, headers and rounding included. All bindings are kept, so that none
// reuses the memory of an earlier one.
void memory(benchmark::State &state)
{
    constexpr std::size_t count = 4096;
    static Model source;
    static Model target;
    static std::deque<Binding> bindings;
    const bool isTwoWay = state.range(0) == 2;
    for (auto _ : state) {
        const std::size_t before = mallinfo2().uordblks;
        for (std::size_t i = 0; i < count; ++i)
            bindings.emplace_back(&source, u"value"_s, &target, u"value"_s, isTwoWay);
        state.counters["bytes"] = double(mallinfo2().uordblks - before) / count;
    }
}

BENCHMARK(signalToSlot)->Name("binding/signalToSlot");
BENCHMARK(signalToSlotPair)->Name("binding/signalToSlotPair");
BENCHMARK(members)->Name("binding/members");
BENCHMARK(byNameRelay)->Name("binding/byNameRelay");
BENCHMARK(transformingByNameRelay)->Name("binding/transformingByNameRelay");
BENCHMARK(twoWayByNameRelay)->Name("binding/twoWayByNameRelay");
BENCHMARK(oneWay)->Name("binding/oneWay");
BENCHMARK(twoWay)->Name("binding/twoWay");
BENCHMARK(transformed)->Name("binding/transformed");
BENCHMARK(typed)->Name("binding/typed");
BENCHMARK(typedTransformed)->Name("binding/typedTransformed");
BENCHMARK(typedTransformedTwoWay)->Name("binding/typedTransformedTwoWay");
BENCHMARK(dotted)->Name("binding/dotted")->Arg(1)->Arg(2)->Arg(8);
BENCHMARK(construction)->Name("binding/construction")->Arg(1000)->Arg(10000);
BENCHMARK(notification)->Name("binding/notification")->Arg(1000)->Arg(10000);
BENCHMARK(computed)->Name("binding/computed")->Arg(1000)->Arg(10000);
BENCHMARK(memory)->Name("binding/memory")->Arg(1)->Arg(2)->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    return runBenchmarks(
            argc, argv,
            {
                    { "binding/oneWayOverRelay", "binding/oneWay", "binding/byNameRelay",
                      Goal::timeAtMost, 1.0 },
                    { "binding/typedOverRelay", "binding/typed", "binding/byNameRelay",
                      Goal::timeAtMost, 0.6 },
                    { "binding/typedTransformedOverRelay", "binding/typedTransformed",
                      "binding/byNameRelay", Goal::timeAtMost, 0.6 },
                    { "binding/membersOverSignalToSlotPair", "binding/members",
                      "binding/signalToSlotPair", Goal::timeAtMost, 1.3 },
                    { "binding/computedIsLinear", "binding/computed/10000", "binding/computed/1000",
                      Goal::timeAtMost, 20.0 },
                    { "binding/twoWayOverRelay", "binding/twoWay", "binding/byNameRelay",
                      Goal::timeAtMost, 1.1 },
                    { "binding/depthCostsNothing", "binding/dotted/8", "binding/dotted/2",
                      Goal::timeAtMost, 1.1 },
                    // Linear growth is a factor of 10, quadratic growth 100. The limit is 20:
                    // the larger number does not fit into the processor's caches.
                    { "binding/constructionIsLinear", "binding/construction/10000",
                      "binding/construction/1000", Goal::timeAtMost, 20.0 },
                    { "binding/notificationIsLinear", "binding/notification/10000",
                      "binding/notification/1000", Goal::timeAtMost, 20.0 },
                    { "binding/bytesOneWay", "binding/memory/1", "bytes", Goal::counterAtMost,
                      512.0 },
                    { "binding/bytesTwoWay", "binding/memory/2", "bytes", Goal::counterAtMost,
                      512.0 },
            });
}

#include "Binding.moc"
