// SPDX-License-Identifier: MIT
// Reads a storyboard and loads each of its scenes. Any bytes must give controllers or an error.
#include <pellarvine/Platform/NSNib.h>
#include <pellarvine/Platform/NSStoryboard.h>
#include <pellarvine/Platform/NSViewController.h>

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

void startApplication()
{
    static int argc = 1;
    static char name[] = "fuzz_storyboard";
    static char *argv[] = { name, nullptr };
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto *const instance = new QApplication(argc, argv);
    static_cast<void>(instance);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    startApplication();
    static const QTemporaryDir folder;
    QFile file(folder.filePath(u"Fuzz.storyboard"_s));
    if (!file.open(QIODevice::WriteOnly))
        std::abort();
    file.write(reinterpret_cast<const char *>(data), qint64(size));
    file.close();
    try {
        const auto storyboard = NS::Storyboard::storyboardWithContentsOfFile(file.fileName());
        for (const QString &identifier : storyboard->identifiers()) {
            const std::unique_ptr<QObject> made(
                    storyboard->instantiateControllerWithIdentifier(identifier));
            if (auto *const controller = qobject_cast<NS::ViewController *>(made.get()))
                controller->view();
        }
        storyboard->check();
    } catch (const NS::StoryboardError &) {
    } catch (const NS::NibError &) { }
    return 0;
}
