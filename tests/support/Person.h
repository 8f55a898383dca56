// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QProperty>
#include <QVariantMap>

#include <memory>

/// A gadget, held by value.
struct Address
{
    Q_GADGET
    Q_PROPERTY(QString city MEMBER city)
    Q_PROPERTY(int storey MEMBER storey)
    Q_PROPERTY(QString country READ country)

public:
    QString country() const { return QStringLiteral("Norway"); }
    bool operator==(const Address &) const = default;

    QString city;
    int storey = 0;
};

/// A value that cannot be compared.
struct Token
{
    int number = 0;
};

/// A model with a property of each kind that key paths support.
class Person : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name MEMBER name NOTIFY nameChanged)
    Q_PROPERTY(int age READ age WRITE setAge NOTIFY ageChanged)
    Q_PROPERTY(bool isMember MEMBER isMember NOTIFY changed)
    Q_PROPERTY(double height MEMBER height NOTIFY changed)
    Q_PROPERTY(Mood mood MEMBER mood NOTIFY changed)
    Q_PROPERTY(QString nickname MEMBER nickname RESET resetNickname NOTIFY changed)
    Q_PROPERTY(QVariant note MEMBER note NOTIFY changed)
    Q_PROPERTY(Address address MEMBER address NOTIFY addressChanged)
    Q_PROPERTY(QVariantMap settings MEMBER settings NOTIFY settingsChanged)
    Q_PROPERTY(Person *partner MEMBER partner NOTIFY partnerChanged)
    Q_PROPERTY(std::shared_ptr<QObject> doctor MEMBER doctor NOTIFY doctorChanged)
    Q_PROPERTY(std::shared_ptr<Person> mentor MEMBER mentor NOTIFY mentorChanged)
    Q_PROPERTY(Token token READ token WRITE setToken NOTIFY tokenChanged)
    Q_PROPERTY(int level READ level WRITE setLevel BINDABLE bindableLevel)
    Q_PROPERTY(QString initials READ initials NOTIFY nameChanged)
    Q_PROPERTY(Person *self READ self CONSTANT)
    Q_PROPERTY(int secret MEMBER secret)
    Q_PROPERTY(Person *stranger MEMBER stranger)

public:
    enum Mood {
        calm,
        cross,
    };
    Q_ENUM(Mood)

    explicit Person(const QString &personName = {}, QObject *parent = nullptr)
        : QObject(parent)
        , name(personName)
    { }

    int age() const { return m_age; }
    void setAge(int age)
    {
        ++ageWrites;
        if (m_age == age)
            return;
        m_age = age;
        Q_EMIT ageChanged(age);
    }

    Token token() const { return m_token; }
    void setToken(Token token)
    {
        m_token = token;
        Q_EMIT tokenChanged();
    }

    int level() const { return m_level; }
    void setLevel(int level) { m_level = level; }
    QBindable<int> bindableLevel() { return &m_level; }

    QString initials() const { return name.left(1); }
    void resetNickname() { setProperty("nickname", QStringLiteral("none")); }
    Person *self() { return this; }

    QString name;
    bool isMember = false;
    double height = 0;
    Mood mood = calm;
    QString nickname;
    QVariant note;
    Address address;
    QVariantMap settings;
    Person *partner = nullptr;
    std::shared_ptr<QObject> doctor;
    std::shared_ptr<Person> mentor;
    int secret = 0;
    Person *stranger = nullptr;
    int ageWrites = 0;

Q_SIGNALS:
    void nameChanged();
    void ageChanged(int age);
    void addressChanged();
    void settingsChanged();
    void partnerChanged(Person *partner);
    void doctorChanged();
    void mentorChanged();
    void tokenChanged();
    void changed();

private:
    int m_age = 0;
    Token m_token;
    Q_OBJECT_BINDABLE_PROPERTY(Person, int, m_level)
};

/// Persons with one name are equal.
class Namesake : public Person
{
    Q_OBJECT

public:
    using Person::Person;

    Q_INVOKABLE bool isEqual(QObject *other) const
    {
        const auto *const person = qobject_cast<Person *>(other);
        return person && person->name == name;
    }
};
