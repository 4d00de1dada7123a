// What few users need is loaded with its first use, and only by a program of the plugin's own version.

#include "core/base/Program.h"
#include "core/shell/Printer.h"
#include "core/store/OfficeEngines.h"
#include "documents/export/TiffFile.h"
#include "setup/pages/PageView.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>

TEST(Plugins, AreAllThatIsLinkedWithTheirLibraries) {
    const auto mentions = [](const QString& file, const char* library) {
        QFile program(QCoreApplication::applicationDirPath() + file);
        EXPECT_TRUE(program.open(QIODevice::ReadOnly)) << file.toStdString();
        return program.readAll().contains(library);
    };
    const std::pair<const char*, const char*> rows[] = {{"libpq", "libpq.so."},
                                                        {"printing", "libQt6PrintSupport.so."},
                                                        {"tiff", "libtiff.so."},
                                                        {"help", "libQt6Help.so."}};
    for (const auto& [plugin, library] : rows) {
        EXPECT_TRUE(mentions(QString("/Plugins/brennoval-%1.so").arg(plugin), library))
            << "or the next line would prove nothing";
        EXPECT_FALSE(mentions("/brennoval", library));
    }
}

TEST(Plugins, RefuseAProgramOfAnotherVersion) {
    const auto factory = []<typename Type>(const char* plugin, const char* name) {
        return reinterpret_cast<Type>(Program::pluginFunction(plugin, name));
    };
    const auto engines = factory.operator()<OfficeEnginesFactory>("brennoval-libpq", "officeEngines");
    const auto printer = factory.operator()<PrinterFactory>("brennoval-printing", "newPrinter");
    const auto tiff = factory.operator()<TiffFileFactory>("brennoval-tiff", "newTiffFile");
    const auto help = factory.operator()<PageViewFactory>("brennoval-help", "createPageView");
    ASSERT_TRUE(engines && printer && tiff && help);
    EXPECT_FALSE(engines("0.9") || printer("0.9") || tiff("0.9", 1, {}) || help("0.9", nullptr));
    EXPECT_FALSE(Program::pluginFunction("brennoval-none", "newPrinter"));
}
