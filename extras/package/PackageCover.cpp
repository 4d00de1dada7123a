#include "extras/package/PackageCover.h"

#include "core/shell/DisplayFields.h"
#include "core/store/OwnDetails.h"
#include "documents/report/DocumentMaker.h"
#include "documents/report/Report.h"

namespace JobPackage {

namespace {

constexpr ReportKind coverKind = {"rptPackage", "rptPackage", "User", [](Report& /*report*/) {},
                                  ReportOf::Job};

/// Puts the engineer's own logo and address on the cover, if the setup has them.
void addOwn(Report& report) {
    constexpr double height = 64; // points of both
    const OwnDetails own = Records::readOwnDetails();
    QStringList lines{shownText(own.address1), shownText(own.address2), shownText(own.phoneNo)};
    lines.removeAll(QString());
    if (!own.name && !own.logo && lines.isEmpty())
        return;
    report.layout().section(Section::ReportHeader)->height += height;
    report.control("lblOwn").visible = own.name || !lines.isEmpty();
    report.control("txtOwnName").text = shownText(own.name);
    report.control("txtOwnAddress").text = lines.join(u'\n');
    ReportControl& logo = report.control("imgOwnLogo");
    logo.visible = own.logo.has_value();
    logo.svg = shownText(own.logo).toUtf8();
    for (const char* text : {"lblOwn", "txtOwnName", "txtOwnAddress"})
        if (!logo.visible)
            report.control(text).place.moveLeft(0);
    logo.description = own.name ? "Logo of " + *own.name : QStringLiteral("Logo");
}

bool isPageNumber(const PageText& text) {
    return text.section == Section::Detail && (text.style->alignment & Qt::AlignRight);
}

bool isTitle(const PageText& text) {
    return text.section == Section::Detail && !(text.style->alignment & Qt::AlignRight);
}

} // namespace

Pages coverPages(const QString& jobID, const JobRecords& job, const Contents& contents,
                 const QList<Entry>& entries) {
    Report report(coverKind);
    const JobHeader header = job.header.value_or(JobHeader());
    report.control("txtJob").text = jobID;
    report.control("txtJobDscrptn").text = shownText(header.jobDscrptn);
    report.control("txtEngineer").text = shownText(header.engineer);
    report.control("txtContractor").text = shownText(header.contractor);
    report.control("txtRep").text = job.representative();
    report.control("txtRevision").text = contents.revision;
    report.control("txtNote").text = contents.note;
    report.control("txtRunningJob").text = jobID;
    addOwn(report);
    for (const Entry& entry : entries)
        report.rows.push_back({{"What", QString(qsizetype(entry.depth) * 4, u' ') + entry.title},
                               {"Page", QString(DocumentMaker::Unknown)}});
    return report.Run().pages;
}

void writePageNumber(Pages& pages, qsizetype coverSize, qsizetype entry, int number) {
    for (qsizetype page = 0; page < coverSize; ++page) {
        const QList<PageText>& texts = pages.at(page).texts;
        for (qsizetype i = 0; i < texts.size(); ++i)
            if (isPageNumber(texts[i]) && entry-- == 0) {
                pages[page].texts[i].text = QString::number(number);
                return;
            }
    }
}

QList<PageLink> titlesOf(const Pages& pages, qsizetype coverSize) {
    QList<PageLink> titles;
    for (int page = 0; page < coverSize; ++page)
        for (const PageText& text : pages[page].texts)
            if (isTitle(text))
                titles.append({page, QRectF(text.place), 0});
    return titles;
}

} // namespace JobPackage
