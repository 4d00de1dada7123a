#pragma once

#include "documents/report/Page.h"

/// What a report is about: models of the catalogue, or a record of the user's.
enum class ReportOf { Catalogue, Job, TankLine };

/// A finished report: its pages and the description that goes into a file of them.
struct Document {
    QString title;
    QString author;
    QString fileName; // the suggested name, without an extension
    Pages pages;
    bool table = false; // the details are the rows of one table, which a workbook can filter
    ReportOf of = ReportOf::Catalogue;
};
