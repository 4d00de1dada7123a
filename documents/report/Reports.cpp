#include "documents/report/Reports.h"

#include <map>

namespace {

std::map<QString, ReportKind>& reports() {
    static std::map<QString, ReportKind> instance;
    return instance;
}

} // namespace

void addReports(std::span<const ReportKind> kinds) {
    for (const ReportKind& kind : kinds)
        reports().insert_or_assign(QLatin1String(kind.name), kind);
}

const ReportKind* findReport(const QString& name) {
    const auto found = reports().find(name);
    return found == reports().end() ? nullptr : &found->second;
}
