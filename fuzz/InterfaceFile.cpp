// SPDX-License-Identifier: MIT
// Loads an interface file. Any bytes must give a tree of objects or an
// error, and an error must leave no objects behind.
#include <pellarvine/Platform/NSNib.h>

#include <QApplication>
#include <QWidget>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

QApplication &application()
{
    static int argc = 1;
    static char name[] = "fuzz_interface_file";
    static char *argv[] = { name, nullptr };
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto *const instance = new QApplication(argc, argv);
    return *instance;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QObject &owner = application(); // before the first widget
    QWidget parent;
    try {
        const NS::Nib nib(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)), {});
        if (!nib.instantiate(&owner, &parent))
            std::abort();
    } catch (const NS::NibError &) {
        if (!parent.children().isEmpty())
            std::abort();
    }
    return 0;
}
