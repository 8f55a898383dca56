// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

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
