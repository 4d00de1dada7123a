#pragma once

#include "documents/report/Page.h"

/// What a report tells of: models of the catalogue, or a record of the user's.
enum class ReportOf { Catalogue, Job, TankLine };

/// A finished report: its pages and what a file of them says about itself.
struct Document {
    QString title;
    QString author;
    QString fileName; // to propose for a file, without an ending
    Pages pages;
    bool table = false; // the details are the rows of one table, which a workbook can filter
    ReportOf of = ReportOf::Catalogue;
};
