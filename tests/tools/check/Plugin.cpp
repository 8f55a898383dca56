// SPDX-License-Identifier: MIT
// The classes that the forms beside this name.
#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSViewController.h>

#include <QFrame>
#include <QLineEdit>
#include <QList>

namespace {

class Badge : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(int number MEMBER number)

public:
    explicit Badge(QWidget *parent = nullptr)
        : QFrame(parent)
    { }
    int number = 0;
};

class FormController : public NS::ViewController
{
    Q_OBJECT
    Q_PROPERTY(QLineEdit *field MEMBER field NOTIFY fieldChanged)
    Q_PROPERTY(QString name MEMBER name NOTIFY nameChanged)
    Q_PROPERTY(QString nickname MEMBER name)
    Q_PROPERTY(QStringList mailboxes MEMBER mailboxes CONSTANT)
    Q_PROPERTY(QList<Badge *> badges MEMBER badges CONSTANT)

public:
    explicit FormController(QObject *parent = nullptr)
        : NS::ViewController(parent)
    { }
    Q_INVOKABLE void save() { }

    QLineEdit *field = nullptr;
    QString name;
    QStringList mailboxes;
    QList<Badge *> badges;

Q_SIGNALS:
    void fieldChanged();
    void nameChanged();
};

} // namespace

extern "C" Q_DECL_EXPORT void pellarvineRegisterClasses();
void pellarvineRegisterClasses()
{
    NS::registerClass<Badge>("Badge");
    NS::registerClass<FormController>("FormController");
}

#include "Plugin.moc"
