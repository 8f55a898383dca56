// SPDX-License-Identifier: MIT
#include "Person.h"

#include <pellarvine/Platform/BindingGroup.h>
#include <pellarvine/Platform/NSComputedBinding.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>
#include <pellarvine/Shared/Binding.h>

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace Pellarvine {

TEST(BindingGroup, calls_a_function_once_for_all_changes_of_a_turn)
{
    Person ada(u"Ada"_s);
    QObject target;
    target.setProperty("text", QString());
    BindingGroup group;
    int calls = 0;
    const auto describe = [&calls](const QString &name, int age) {
        ++calls;
        return u"%1 %2"_s.arg(name).arg(age);
    };
    NS::bind(&target, u"text"_s, { { &ada, u"name"_s }, { &ada, u"age"_s } }, describe, &group);
    EXPECT_EQ(target.property("text"), u"Ada 0"_s); // the first value is carried at once
    ada.setProperty("name", u"Grace"_s);
    ada.setAge(36);
    EXPECT_TRUE(group.isPending());
    EXPECT_EQ(target.property("text"), u"Ada 0"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(target.property("text"), u"Grace 36"_s);
    EXPECT_EQ(calls, 2);
    EXPECT_FALSE(group.isPending());

    ada.setAge(37);
    group.flush();
    EXPECT_EQ(target.property("text"), u"Grace 37"_s);
    ada.setAge(38);
    NS::unbind(&target, u"text"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 3);
}

TEST(BindingGroup, each_target_is_written_once_with_the_last_value)
{
    constexpr int count = 1000;
    Person source;
    std::vector<std::unique_ptr<Person>> targets;
    std::vector<std::unique_ptr<AnyBinding>> bindings;
    BindingGroup group;
    int writes = 0;
    for (int i = 0; i < count; ++i) {
        Person *const target = targets.emplace_back(std::make_unique<Person>()).get();
        bindings.push_back(std::make_unique<Binding>(&source, u"age"_s, target, u"age"_s));
        bindings.back()->setGroup(&group);
        QObject::connect(target, &Person::ageChanged, target, [&writes] { ++writes; });
    }
    for (int age = 1; age <= 3; ++age)
        source.setAge(age);
    EXPECT_EQ(writes, 0);
    bindings.erase(bindings.begin()); // the destroyed binding carries nothing
    group.flush();
    EXPECT_EQ(writes, count - 1);
    EXPECT_EQ(targets.front()->age(), 0);
    EXPECT_EQ(targets.back()->age(), 3);

    // If both sides change before the flush, the later change is carried.
    source.setAge(4);
    targets.back()->setAge(5);
    group.flush();
    EXPECT_EQ(source.age(), 5);

    bindings.back()->setGroup(nullptr);
    source.setAge(6);
    EXPECT_EQ(targets.back()->age(), 6);
    EXPECT_EQ(targets[1]->age(), 5);
    group.flush();
    EXPECT_EQ(targets[1]->age(), 6);
}

TEST(BindingGroup, may_be_destroyed_before_its_bindings_and_during_a_flush)
{
    Person source;
    Person target;
    auto group = std::make_unique<BindingGroup>();
    Binding binding(&source, u"age"_s, &target, u"age"_s);
    binding.setGroup(group.get());
    source.setAge(1);
    group.reset();
    EXPECT_EQ(target.age(), 1); // the pending change is carried
    source.setAge(2);
    EXPECT_EQ(target.age(), 2);

    auto *const deleted = new BindingGroup;
    binding.setGroup(deleted);
    QObject::connect(&target, &Person::ageChanged, deleted, [deleted] { delete deleted; });
    source.setAge(3);
    deleted->flush();
    EXPECT_EQ(target.age(), 3);

    // If the source is destroyed before the flush, nothing is carried.
    BindingGroup last;
    auto gone = std::make_unique<Person>();
    const Binding other(gone.get(), u"age"_s, &target, u"age"_s);
    const_cast<Binding &>(other).setGroup(&last);
    gone->setAge(9);
    gone.reset();
    last.flush();
    EXPECT_EQ(target.age(), 0);
}

} // namespace Pellarvine
