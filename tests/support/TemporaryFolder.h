// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

class TemporaryFolder : public QTemporaryDir
{
public:
    /// Writes a file of that name. Returns its path.
    QString file(const QString &name, const QByteArray &contents) const
    {
        QFile file(filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(contents), contents.size());
        return file.fileName();
    }
};
