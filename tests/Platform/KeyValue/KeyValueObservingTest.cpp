// SPDX-License-Identifier: MIT
#include "Person.h"

#include <pellarvine/Platform/KeyValueCoding.h>
#include <pellarvine/Platform/KeyValueEquality.h>
#include <pellarvine/Platform/KeyValueObserving.h>

#include <QThread>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

using enum KeyValueObservingOptions;

class Recorder : public KeyValueObserver
{
public:
    void observeValue(const QString &, QObject *object, const KeyValueChange *change) override
    {
        values.append(change->newValue);
        lastObject = object;
        if (onChange)
            onChange();
    }

    QVariantList taken() { return std::exchange(values, {}); }

    QVariantList values;
    QObject *lastObject = nullptr;
    std::function<void()> onChange;
};

QVariantList values(std::initializer_list<QVariant> list)
{
    return list;
}

// The value of a path on which an object is null.
QVariantList justNull()
{
    return { nullObject() };
}

void set(QObject &object, const QString &path, const QVariant &value)
{
    setValueForKeyPath(&object, path, value);
}

KeyValueException::Reason reasonOfRefusal(QObject &object, const QString &path)
{
    Recorder recorder;
    try {
        addObserver(&object, &recorder, path, newValue);
    } catch (const KeyValueException &error) {
        EXPECT_THROW(removeObserver(&object, &recorder, path), KeyValueException);
        return error.reason();
    }
    ADD_FAILURE() << path.toStdString() << " was not refused";
    return {};
}

} // namespace

TEST(KeyValueObserving, every_kind_of_property_reports_each_change_once)
{
    registerSharedPointer<Person>();
    Person partner(u"Bea"_s);
    Person person(u"Ada"_s);
    person.partner = &partner;
    person.mentor = std::make_shared<Person>();
    person.settings = { { u"font"_s, QVariantMap() },
                        { u"owner"_s, QVariant::fromValue(&partner) } };
    person.setProperty("hobby", u"chess"_s);
    const std::pair<QString, QVariant> rows[] = {
        { u"name"_s, u"Eve"_s }, // NOTIFY without an argument
        { u"age"_s, 30 }, // NOTIFY with one
        { u"level"_s, 4 }, // bindable, no NOTIFY
        { u"hobby"_s, u"go"_s }, // dynamic
        { u"address.city"_s, u"Oslo"_s },
        { u"settings.font.size"_s, 12 },
        { u"settings.owner.name"_s, u"Fay"_s },
        { u"partner.level"_s, 4 },
        { u"mentor.age"_s, 50 },
        { u"self.self.height"_s, 1.7 },
    };
    for (const auto &[path, value] : rows) {
        Recorder recorder;
        addObserver(&person, &recorder, path, newValue);
        set(person, path, value);
        EXPECT_EQ(recorder.taken(), values({ value })) << path.toStdString();
        EXPECT_EQ(recorder.lastObject, &person) << path.toStdString();
        set(person, path, value);
        EXPECT_EQ(recorder.taken(), values({})) << path.toStdString();
        removeObserver(&person, &recorder, path);
        set(person, path, {});
        EXPECT_EQ(recorder.taken(), values({})) << path.toStdString();
    }
}

TEST(KeyValueObserving, a_property_that_reports_no_changes_is_refused)
{
    Person person;
    person.stranger = &person;
    EXPECT_EQ(reasonOfRefusal(person, u"secret"_s), KeyValueException::notObservable);
    EXPECT_EQ(reasonOfRefusal(person, u"stranger.name"_s), KeyValueException::notObservable);
    EXPECT_EQ(reasonOfRefusal(person, u"self.secret"_s), KeyValueException::notObservable);
    EXPECT_EQ(reasonOfRefusal(person, u"self.surname"_s), KeyValueException::undefinedKey);
    EXPECT_EQ(reasonOfRefusal(person, u"hobby"_s), KeyValueException::undefinedKey);
    Recorder recorder;
    EXPECT_NO_THROW(addObserver(&person, &recorder, u"self"_s, newValue)); // constant
}

TEST(KeyValueObserving, the_options_decide_on_an_initial_call)
{
    Person person(u"Ada"_s);
    Recorder recorder;
    addObserver(&person, &recorder, u"name"_s, newValueAndInitial);
    EXPECT_EQ(recorder.taken(), values({ u"Ada"_s }));
    addObserver(&person, &recorder, u"partner.name"_s, newValueAndInitial);
    EXPECT_EQ(recorder.taken(), justNull());
    addObserver(&person, &recorder, u"age"_s, newValue);
    EXPECT_EQ(recorder.taken(), values({}));
}

TEST(KeyValueObserving, a_registration_follows_when_an_object_on_the_way_is_replaced)
{
    Person first(u"Bea"_s);
    Person second(u"Cid"_s);
    Person person;
    Recorder recorder;
    addObserver(&person, &recorder, u"partner.partner.name"_s, newValue);

    set(first, u"partner"_s, QVariant::fromValue(&second));
    EXPECT_EQ(recorder.taken(), values({})); // not on the path yet
    set(person, u"partner"_s, QVariant::fromValue(&first));
    EXPECT_EQ(recorder.taken(), values({ u"Cid"_s }));
    set(second, u"name"_s, u"Dov"_s);
    EXPECT_EQ(recorder.taken(), values({ u"Dov"_s }));
    set(first, u"partner"_s, QVariant::fromValue(&first));
    EXPECT_EQ(recorder.taken(), values({ u"Bea"_s }));
    set(second, u"name"_s, u"Eve"_s);
    EXPECT_EQ(recorder.taken(), values({})); // not on the path any more
    set(person, u"partner"_s, {});
    EXPECT_EQ(recorder.taken(), justNull());
    set(first, u"partner"_s, {});
    EXPECT_EQ(recorder.taken(), values({}));
    Q_EMIT person.partnerChanged(nullptr);
    EXPECT_EQ(recorder.taken(), values({})); // still null
}

TEST(KeyValueObserving, a_registration_follows_when_an_object_on_the_way_is_destroyed)
{
    Person person;
    Recorder recorder;
    auto last = std::make_unique<Person>(u"Cid"_s);
    auto middle = std::make_unique<Person>(u"Bea"_s);
    middle->partner = last.get();
    person.partner = middle.get();
    addObserver(&person, &recorder, u"partner.partner.name"_s, newValue);
    auto next = std::make_unique<Person>(u"Dov"_s); // before reset(), for another address
    last.reset();
    EXPECT_EQ(recorder.taken(), justNull());
    last = std::move(next);
    set(*middle, u"partner"_s, QVariant::fromValue(last.get()));
    EXPECT_EQ(recorder.taken(), values({ u"Dov"_s }));
    middle.reset();
    EXPECT_EQ(recorder.taken(), justNull());
    set(person, u"partner"_s, {});
    EXPECT_EQ(recorder.taken(), values({})); // still null
    set(person, u"partner"_s, QVariant::fromValue(last.get()));
    EXPECT_EQ(recorder.taken(), values({})); // `last` has no partner: still null
}

TEST(KeyValueObserving, an_entry_of_a_map_may_change_from_a_value_to_an_object_and_back)
{
    Person owner(u"Bea"_s);
    Person person;
    person.settings = { { u"owner"_s, QVariantMap { { u"name"_s, u"nobody"_s } } } };
    Recorder recorder;
    addObserver(&person, &recorder, u"settings.owner.name"_s, newValue);
    set(person, u"settings.owner"_s, QVariant::fromValue(&owner));
    EXPECT_EQ(recorder.taken(), values({ u"Bea"_s }));
    set(owner, u"name"_s, u"Cid"_s);
    EXPECT_EQ(recorder.taken(), values({ u"Cid"_s }));
    set(person, u"settings.colour"_s, u"red"_s);
    EXPECT_EQ(recorder.taken(), values({})); // the owner is the same
    set(person, u"settings.owner"_s, QVariantMap { { u"name"_s, u"all"_s } });
    EXPECT_EQ(recorder.taken(), values({ u"all"_s }));
    set(owner, u"name"_s, u"Dov"_s);
    EXPECT_EQ(recorder.taken(), values({}));
    // The same object, with the rest of the path from another key on.
    Recorder later;
    owner.settings = { { u"name"_s, u"Eve"_s } };
    set(person, u"note"_s, QVariant::fromValue(&owner));
    addObserver(&person, &later, u"note.settings.name"_s, newValue);
    set(person, u"note"_s, QVariantMap { { u"settings"_s, QVariant::fromValue(&owner) } });
    EXPECT_EQ(later.taken(), values({ u"Dov"_s }));
}

TEST(KeyValueObserving, an_object_that_lacks_the_key_ends_the_path_with_a_warning)
{
    Person person;
    person.settings = { { u"owner"_s, QVariant::fromValue(&person) } };
    Recorder recorder;
    addObserver(&person, &recorder, u"settings.owner.height"_s, newValue);
    QObject other;
    for (const QVariant &misfit : { QVariant::fromValue(&other), QVariant(3) }) {
        ::testing::internal::CaptureStdout();
        set(person, u"settings.owner"_s, misfit);
        EXPECT_NE(::testing::internal::GetCapturedStdout().find("has no key \"height\""),
                  std::string::npos);
        EXPECT_EQ(recorder.taken(), justNull());
        set(person, u"settings.owner"_s, QVariant::fromValue(&person));
        EXPECT_EQ(recorder.taken(), values({ 0.0 }));
    }
}

TEST(KeyValueObserving, a_destroyed_root_leaves_its_registrations_silent)
{
    Person partner;
    auto person = std::make_unique<Person>();
    person->partner = &partner;
    person->setProperty("hobby", 1);
    Recorder recorder;
    for (const QString &path : { u"name"_s, u"level"_s, u"hobby"_s, u"partner.name"_s })
        addObserver(person.get(), &recorder, path, newValue);
    person.reset();
    set(partner, u"name"_s, u"Eve"_s);
    EXPECT_EQ(recorder.taken(), values({}));
}

TEST(KeyValueObserving, an_observer_may_end_its_registration_or_itself_while_it_is_told)
{
    Person partner;
    Person person;
    person.partner = &partner;
    person.setProperty("hobby", 0);
    for (const QString &path :
         { u"age"_s, u"level"_s, u"hobby"_s, u"partner.age"_s, u"partner"_s }) {
        const QVariant other = path == u"partner"_s ? QVariant() : QVariant(person.age() + 1);
        Recorder removed;
        removed.onChange = [&] {
            removeObserver(&person, &removed, path);
        };
        addObserver(&person, &removed, path, newValue);
        auto *const destroyed = new Recorder;
        int calls = 0;
        destroyed->onChange = [&calls, destroyed] {
            int &count = calls; // deleting the observer deletes the captures
            delete destroyed;
            ++count;
        };
        addObserver(&person, destroyed, path, newValue);
        Recorder last;
        addObserver(&person, &last, path, newValue);
        set(person, path, other);
        EXPECT_EQ(removed.values.size(), 1) << path.toStdString();
        EXPECT_EQ(calls, 1) << path.toStdString();
        EXPECT_EQ(last.values.size(), 1) << path.toStdString();
        set(person, path, path == u"partner"_s ? QVariant::fromValue(&partner) : QVariant(99));
        EXPECT_EQ(removed.values.size(), 1) << path.toStdString();
        EXPECT_EQ(last.values.size(), 2) << path.toStdString();
        person.setAge(0);
        partner.setAge(0);
    }
}

TEST(KeyValueObserving, observers_of_one_object_may_come_and_go_while_they_are_told)
{
    Person person;
    person.setProperty("hobby", 0);
    for (const QString &path : { u"age"_s, u"level"_s, u"hobby"_s }) {
        std::vector<std::unique_ptr<Recorder>> added;
        auto ended = std::make_unique<Recorder>();
        Recorder changing;
        Recorder other;
        for (Recorder *const recorder : { &other, &changing, ended.get() })
            addObserver(&person, recorder, path, newValue);
        changing.onChange = [&] {
            ended.reset();
            if (added.size() < 9)
                added.push_back(std::make_unique<Recorder>());
            addObserver(&person, added.back().get(), path, newValue);
        };
        set(person, path, 1);
        EXPECT_EQ(changing.taken(), values({ 1 })) << path.toStdString();
        EXPECT_EQ(other.taken(), values({ 1 })) << path.toStdString();
        changing.onChange = [&] {
            added.clear();
            removeObserver(&person, &changing, path);
            addObserver(&person, &changing, path, newValue);
        };
        set(person, path, 2);
        EXPECT_EQ(changing.taken(), values({ 2 })) << path.toStdString();
        EXPECT_EQ(other.taken(), values({ 2 })) << path.toStdString();
    }
}

TEST(KeyValueObserving, an_object_may_move_to_another_thread)
{
    Recorder recorder;
    QThread thread;
    QThread *const home = QThread::currentThread();
    {
        QObject root;
        QObject object(&root);
        object.setProperty("hobby", 0);
        addObserver(&object, &recorder, u"hobby"_s, newValue);
        thread.start();
        root.moveToThread(&thread);
        QMetaObject::invokeMethod(
                &object,
                [&] {
                    object.setProperty("hobby", 1);
                    root.moveToThread(home);
                },
                Qt::BlockingQueuedConnection);
        object.setProperty("hobby", 2);
        EXPECT_EQ(recorder.taken(), values({ 1, 2 }));
    }
    thread.quit();
    thread.wait();
}

TEST(KeyValueObserving, an_exception_leaves_the_initial_call_but_never_a_signal)
{
    Person person;
    Recorder recorder;
    recorder.onChange = [] {
        throw std::runtime_error("too much");
    };
    EXPECT_THROW(addObserver(&person, &recorder, u"age"_s, newValueAndInitial), std::runtime_error);
    person.setAge(1);
    EXPECT_EQ(recorder.taken().size(), 1); // the observer is not registered
    addObserver(&person, &recorder, u"age"_s, newValue);
    ::testing::internal::CaptureStdout();
    EXPECT_NO_THROW(person.setAge(2));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "Warning: too much (the observer of Person.age)\n");
    // The registration may end before the exception.
    Recorder ending;
    auto *deleted = new Recorder;
    ending.onChange = [&] {
        removeObserver(&person, &ending, u"age"_s);
        throw std::runtime_error("removed");
    };
    deleted->onChange = [&] {
        delete std::exchange(deleted, nullptr);
        throw std::runtime_error("deleted");
    };
    for (Recorder *const initial : { &ending, deleted })
        EXPECT_THROW(addObserver(&person, initial, u"age"_s, newValueAndInitial),
                     std::runtime_error);
}

TEST(KeyValueObserving, the_thread_that_changes_a_property_is_told)
{
    std::thread::id told;
    Recorder recorder;
    recorder.onChange = [&] {
        told = std::this_thread::get_id();
    };
    // Made and changed on another thread.
    std::optional<Person> person;
    std::thread([&] {
        person.emplace();
        person->setProperty("hobby", 0);
    }).join();
    for (const QString &path : { u"age"_s, u"level"_s, u"hobby"_s }) {
        addObserver(&*person, &recorder, path, newValue);
        std::thread worker([&] { set(*person, path, 5); });
        const std::thread::id id = worker.get_id();
        worker.join();
        EXPECT_EQ(told, id) << path.toStdString();
    }
}

} // namespace NS
