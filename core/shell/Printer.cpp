#include "core/shell/Printer.h"

#include "core/base/Fault.h"
#include "core/base/Program.h"

std::unique_ptr<Printer> newPrinter() {
    const auto create =
        reinterpret_cast<PrinterFactory>(Program::pluginFunction("brennoval-printing", "newPrinter"));
    std::unique_ptr<Printer> printer(create ? create(Program::fullProgramVersion().toUtf8().constData())
                                            : nullptr);
    if (!printer)
        throw Fault(Fault::Printer, "The part of the program that prints is missing or of another version. "
                                    "Please install the program again.");
    return printer;
}
