#include "GreetingController.h"

void GreetingController::setName(const QString &name)
{
    if (name == m_name)
        return;
    m_name = name;
    Q_EMIT nameChanged();
}

QString GreetingController::greeting() const
{
    return m_name.isEmpty() ? tr("Hello!") : tr("Hello, %1!").arg(m_name);
}
