#pragma once

#include <QString>

#include <cstdint>
#include <functional>

class Connection;

namespace UtilityFunctions {

/// The one failure path: closes the connections, builds the report of thirteen lines and shows it in
/// frmError without waiting. The database password is masked in the system source.
void ReportError(std::int32_t number, const QString& description, const QString& dll, const QString& source,
                 const QString& codeSource, Connection* connection1 = nullptr,
                 Connection* connection2 = nullptr, const QString& module = {});

/// Runs a procedure; any exception that leaves it becomes a ReportError under the given name.
void Trap(const QString& codeSource, const std::function<void()>& procedure, const QString& module = {});

/// Runs a procedure that a handler calls: a failure is reported under the procedure's own name and ends
/// the handler too.
void Procedure(const QString& codeSource, const std::function<void()>& procedure);

/// Shows a text in frmError.
void ShowErrorText(const QString& text, const QString& module = {});

/// The program's folder, where the drawings are.
QString ProgramFolder();

/// Whether another copy of the program was running when this was first asked; main asks at the start.
bool PreviousInstance();

/// "1.0", the program's major and minor version.
QString ProgramVersion();

} // namespace UtilityFunctions
