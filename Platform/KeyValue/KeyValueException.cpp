// SPDX-License-Identifier: MIT
#include "KeyValue/KeyValueException.h"

using namespace Qt::StringLiterals;

namespace NS {

namespace {

QString sentence(KeyValueException::Reason reason)
{
    switch (reason) {
    case KeyValueException::undefinedKey:
        return u"%1 has no key \"%2\""_s;
    case KeyValueException::readOnly:
        return u"%1 cannot write its key \"%2\""_s;
    case KeyValueException::notConvertible:
        return u"%1 cannot take this value for its key \"%2\""_s;
    case KeyValueException::notObservable:
        return u"%1 does not report changes of its key \"%2\""_s;
    }
    return u"%1: %2"_s;
}

} // namespace

KeyValueException::KeyValueException(Reason reason, const QByteArray &className,
                                     const QString &keyPath, const QString &key,
                                     const QString &detail)
    : m_reason(reason)
    , m_className(className)
    , m_keyPath(keyPath)
    , m_key(key)
{
    QString text = sentence(reason).arg(QString::fromUtf8(className), key);
    if (!detail.isEmpty())
        text += u": "_s + detail;
    text += u" (key path \"%1\")"_s.arg(keyPath);
    m_text = text.toUtf8();
}

KeyValueException::~KeyValueException() = default;

const char *KeyValueException::what() const noexcept
{
    return m_text.constData();
}

} // namespace NS
