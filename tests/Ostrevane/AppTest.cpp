// SPDX-License-Identifier: MIT
#include "Ostrevane/DeviceModel.h"
#include "ResourceFile.h"

#include <pellarvine/Ostrevane/App.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QSysInfo>
#include <QTemporaryDir>
#include <gmock/gmock.h>

#include <sys/stat.h>
#include <type_traits>

using namespace Qt::StringLiterals;

namespace Pellarvine {

static_assert(!std::is_default_constructible_v<App>);

namespace {

// The program's Info.plist, as long as the object exists. A pair is a key and the XML of its value.
class Facts : public ResourceFile
{
public:
    explicit Facts(const QList<std::pair<QString, QString>> &facts)
        : ResourceFile(u":/Info.plist"_s, xml(facts))
    { }

private:
    static QByteArray xml(const QList<std::pair<QString, QString>> &facts)
    {
        QString text = u"<plist><dict>"_s;
        for (const auto &[key, value] : facts)
            text += u"<key>"_s + key + u"</key>"_s + value;
        return (text + u"</dict></plist>"_s).toUtf8();
    }
};

const QString displayName = u"CFBundleDisplayName"_s;
const QString bundleName = u"CFBundleName"_s;
const QString shortVersion = u"CFBundleShortVersionString"_s;
const QString build = u"CFBundleVersion"_s;
const QString identifier = u"CFBundleIdentifier"_s;

// Replaces the user's data folder by a temporary one.
class DataHome
{
public:
    explicit DataHome(const QString &below)
        : path(m_folder.filePath(below))
    {
        qputenv("XDG_DATA_HOME", QFile::encodeName(path));
    }
    DataHome(const DataHome &) = delete;
    DataHome &operator=(const DataHome &) = delete;
    ~DataHome()
    {
        if (m_before.isNull())
            qunsetenv("XDG_DATA_HOME");
        else
            qputenv("XDG_DATA_HOME", m_before);
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_before = qgetenv("XDG_DATA_HOME");

public:
    const QString path;
};

unsigned mode(const QString &path)
{
    struct stat status
    { };
    EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0) << qPrintable(path);
    return status.st_mode & 0777U;
}

} // namespace

TEST(App, its_name_version_and_copyright_fall_back_step_by_step)
{
    const struct
    {
        QList<std::pair<QString, QString>> facts;
        QString name;
        QString version;
        QString copyright;
    } rows[] = {
        { {}, {}, u"0"_s, {} },
        { { { displayName, u"<string>Post</string>"_s },
            { bundleName, u"<string>post</string>"_s },
            { shortVersion, u"<string>1.2</string>"_s },
            { build, u"<string>345</string>"_s },
            { u"NSHumanReadableCopyright"_s, u"<string>© 2026 Post</string>"_s } },
          u"Post"_s,
          u"1.2"_s,
          u"© 2026 Post"_s },
        // An empty display name is used. An empty version is not.
        { { { displayName, u"<string/>"_s },
            { bundleName, u"<string>post</string>"_s },
            { shortVersion, u"<string/>"_s },
            { build, u"<string>345</string>"_s } },
          {},
          u"345"_s,
          {} },
        // Values that are not text are ignored.
        { { { displayName, u"<integer>1</integer>"_s },
            { bundleName, u"<string>post</string>"_s },
            { shortVersion, u"<real>1.2</real>"_s },
            { build, u"<integer>345</integer>"_s },
            { u"NSHumanReadableCopyright"_s, u"<array/>"_s } },
          u"post"_s,
          u"0"_s,
          {} },
        { { { shortVersion, u"<string/>"_s }, { build, u"<string/>"_s } }, {}, {}, {} },
    };
    for (const auto &row : rows) {
        const Facts facts(row.facts);
        EXPECT_EQ(App::name(), row.name);
        EXPECT_EQ(App::version(), row.version);
        EXPECT_EQ(App::copyright(), row.copyright);
    }
}

TEST(App, the_platform_is_fixed_and_the_system_is_worded_by_itself)
{
    EXPECT_EQ(App::platform(), u"macOS"_s);
    EXPECT_EQ(App::operatingSystem(), u"macOS "_s + QSysInfo::prettyProductName());
    EXPECT_EQ(App::deviceModel(), QSysInfo::currentCpuArchitecture());
}

TEST(App, the_device_model_skips_zeros_and_reads_all_256_bytes)
{
    detail::MachineField machine {};
    EXPECT_EQ(detail::deviceModel(machine), QString());
    machine[3] = 'x';
    machine[4] = '8';
    machine[200] = 127;
    machine[255] = '6';
    EXPECT_EQ(detail::deviceModel(machine), u"x8\u007f6"_s);
    machine[254] = -128;
    EXPECT_DEATH(detail::deviceModel(machine), "Error: the machine's name has a byte above 127");
}

TEST(App, its_folder_is_created_with_those_above_for_the_user_alone)
{
    const DataHome home(u"a/share"_s);
    const Facts facts({ { identifier, u"<string>org.example.post</string>"_s } });
    const QString folder = home.path + u"/org.example.post"_s;
    EXPECT_EQ(App::applicationSupportSubdirectory(), QUrl::fromLocalFile(folder + u'/'));
    for (const QString &path : { folder, home.path, QFileInfo(home.path).path() })
        EXPECT_EQ(mode(path), 0700U) << qPrintable(path);

    // An existing folder is not changed.
    ASSERT_EQ(::chmod(QFile::encodeName(folder).constData(), 0755), 0);
    EXPECT_TRUE(App::applicationSupportSubdirectory());
    EXPECT_EQ(mode(folder), 0755U);
}

TEST(App, without_an_identifier_the_folder_has_the_fallback_one)
{
    const DataHome home(u"share"_s);
    const Facts facts({ { identifier, u"<integer>7</integer>"_s } });
    const std::optional<QUrl> folder = App::applicationSupportSubdirectory();
    ASSERT_TRUE(folder);
    const QString name = QDir(folder->toLocalFile()).dirName();
    EXPECT_EQ(name, u"org.example.test"_s);
    EXPECT_TRUE(QFileInfo(folder->toLocalFile()).isDir());
}

TEST(App, a_relative_folder_for_data_is_ignored)
{
    const DataHome home(u"home"_s);
    const Facts facts({ { identifier, u"<string>org.example.post</string>"_s } });
    const QByteArray before = qgetenv("HOME");
    const auto restore = qScopeGuard([&] { qputenv("HOME", before); });
    qputenv("HOME", QFile::encodeName(home.path));
    qputenv("XDG_DATA_HOME", "share");
    EXPECT_EQ(App::applicationSupportSubdirectory(),
              QUrl::fromLocalFile(home.path + u"/.local/share/org.example.post/"_s));
    EXPECT_FALSE(QFileInfo::exists(u"share"_s));
}

TEST(App, an_identifier_that_leads_to_another_folder_is_refused)
{
    for (const QString &name : { u"../elsewhere"_s, u"a/b"_s, u".."_s }) {
        const DataHome home(u"a/share"_s);
        const Facts facts({ { identifier, u"<string>%1</string>"_s.arg(name) } });
        ::testing::internal::CaptureStdout();
        EXPECT_EQ(App::applicationSupportSubdirectory(), std::nullopt);
        EXPECT_EQ(::testing::internal::GetCapturedStdout(),
                  "Error locating application support subdirectory: " + name.toStdString()
                          + " cannot name a folder\n");
        EXPECT_FALSE(QFileInfo::exists(home.path));
    }
}

TEST(App, without_a_folder_it_prints_a_line_and_returns_nothing)
{
    const Facts facts({ { identifier, u"<string>org.example.post</string>"_s } });
    for (const QString &obstacle : { u""_s, u"/org.example.post"_s }) {
        const DataHome home(u"share"_s);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(home.path + obstacle).path()));
        QFile file(home.path + obstacle);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ::testing::internal::CaptureStdout();
        EXPECT_EQ(App::applicationSupportSubdirectory(), std::nullopt);
        EXPECT_EQ(::testing::internal::GetCapturedStdout(),
                  "Error locating application support subdirectory: File exists\n");
    }
}

} // namespace Pellarvine
