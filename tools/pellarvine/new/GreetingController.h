#pragma once

#include <pellarvine/Pellarvine/NavigationItemViewController.h>

/// The first screen: its form, Greeting.ui, is bound to these properties.
class GreetingController : public Pellarvine::NavigationItemViewController
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QString greeting READ greeting NOTIFY nameChanged)

public:
    using NavigationItemViewController::NavigationItemViewController;

    QString name() const { return m_name; }
    void setName(const QString &name);

    QString greeting() const;

Q_SIGNALS:
    void nameChanged();

private:
    QString m_name;
};
