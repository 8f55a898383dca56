// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <gtest/gtest.h>

// Declarations that the examples of all rooms need.

using namespace Qt::StringLiterals;

inline QString tr(const char *text)
{
    return QString::fromUtf8(text);
}

template <typename... Arguments>
void connect(Arguments... arguments)
{
    QObject::connect(arguments...);
}

/// A model whose properties are dynamic ones.
class Model : public QObject
{
public:
    explicit Model(const QVariantMap &values, QObject *parent = nullptr)
        : QObject(parent)
    {
        for (auto value = values.begin(); value != values.end(); ++value)
            setProperty(value.key().toUtf8(), value.value());
    }
};

/// Collects what Qt's message functions print.
class Messages
{
public:
    Messages()
    {
        texts.clear();
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &text) {
            texts.append(text);
        });
    }
    Messages(const Messages &) = delete;
    Messages &operator=(const Messages &) = delete;
    ~Messages() { qInstallMessageHandler(nullptr); }

    static inline QStringList texts;
};
