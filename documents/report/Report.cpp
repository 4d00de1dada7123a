#include "documents/report/Report.h"

#include "core/base/Fault.h"
#include "core/store/Gateway.h"
#include "documents/report/Renderer.h"

Report::Report(const ReportKind& reportKind)
    : kind(reportKind), reportLayout(Layout::load(reportKind.layout)) {
    title = reportLayout.title;
    fileName = title;
}

ReportControl& Report::control(const QString& controlName) {
    ReportControl* found = reportLayout.control(controlName);
    if (!found)
        throw Fault(Fault::ObjectNotSet, kind.name + (" has no " + controlName).toStdString());
    return *found;
}

Document Report::Run() {
    kind.start(*this);
    return {.title = title,
            .author = author,
            .fileName = fileName,
            .pages = source.isEmpty() ? listedPages() : statementPages(),
            .table = reportLayout.table,
            .of = kind.of};
}

Pages Report::listedPages() const {
    ListedRows listed(rows);
    return renderPages(reportLayout, listed);
}

Pages Report::statementPages() const {
    const Connection connection = Gateway::openDatabase(kind.database);
    Recordset recordset;
    recordset.Open(source, connection, parameters);
    return renderPages(reportLayout, recordset);
}
