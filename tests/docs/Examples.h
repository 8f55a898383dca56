// SPDX-License-Identifier: MIT
#pragma once

#include "Messages.h"

#include <QObject>
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

/// A model with dynamic properties.
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
