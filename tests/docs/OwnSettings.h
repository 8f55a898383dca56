// SPDX-License-Identifier: MIT
#pragma once

#include "TemporaryFolder.h"

#include <QCoreApplication>
#include <QSettings>

/// Keeps the program's settings in a folder of the test.
class OwnSettings
{
public:
    OwnSettings()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("example"));
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder.path());
    }

private:
    TemporaryFolder m_folder;
};
