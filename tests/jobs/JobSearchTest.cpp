// Searches for jobs through the search screen.

#include "core/store/Database.h"
#include "core/store/Gateway.h"
#include "tests/support/Driver.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QLocale>
#include <QTreeWidget>

#include <random>

using namespace Gateway;

namespace {

/// What a user enters: text and comparison for each criterion.
struct Entries {
    QStringList jobID = {"", ""};
    QStringList contractor = {"", ""};
    QStringList engineer = {"", ""};
    QStringList created = {"", "", ""}; // the last is the second date of a range
};

struct Job {
    QString jobID;
    QString contractor;
    QString engineer;
    QDateTime created;
};

class JobSearch : public testing::Test {
  protected:
    JobSearch() {
        QLocale::setDefault(QLocale("en_US"));
        home.installData();
        Driver::start();
        Driver::command("mnuEditJob");
    }
    ~JobSearch() override { Driver::stop(); }

    void add(const Job& job) {
        Connection user = openDatabase("User");
        Recordset rows;
        rows.Open("tblJobHeader", user, CursorType::Keyset, CommandType::Table);
        rows.AddNew();
        rows["JobID"] = job.jobID;
        rows["Contractor"] = job.contractor;
        rows["Engineer"] = job.engineer;
        if (job.created.isValid())
            rows["DateCreated"] = job.created;
        rows.Update();
        jobs.append(job);
    }

    static QStringList found(const Entries& entries) {
        const auto enter = [](const char* box, const char* comparison, const QStringList& texts) {
            Driver::control<QLineEdit>(SearchScreen, box)->setText(texts[0]);
            auto* combo = Driver::control<QComboBox>(SearchScreen, comparison);
            combo->setCurrentIndex(combo->findText(texts[1]));
        };
        enter("txtJobID", "cmboCriteriaJob", entries.jobID);
        enter("txtContractor", "cmboCriteriaContractor", entries.contractor);
        enter("txtEngineer", "cmboCriteriaEngineer", entries.engineer);
        enter("txtDate1", "cmboCriteriaDateCreated", entries.created);
        Driver::control<QLineEdit>(SearchScreen, "txtDate2")->setText(entries.created.value(2));
        Driver::press(SearchScreen, "bttnFind");
        const auto* list = Driver::control<QTreeWidget>(SearchScreen, "lvOptions");
        QStringList ids;
        for (int i = 0; i < list->topLevelItemCount(); ++i)
            ids.append(list->topLevelItem(i)->text(0));
        ids.sort();
        return ids;
    }

    static constexpr const char* SearchScreen = "frmjobsearchdialog";
    TemporaryHome home;
    QList<Job> jobs;
};

bool textPasses(const QString& value, const QStringList& criterion, bool endsWithIsContains) {
    const QString& text = criterion[0];
    const QString& how = criterion[1];
    const auto anyCase = Qt::CaseInsensitive;
    if (text.isEmpty() || how.isEmpty())
        return true;
    if (how == "Equals")
        return value.compare(text, anyCase) == 0;
    if (how == "Starts With")
        return value.startsWith(text, anyCase);
    if (how == "Ends With" && !endsWithIsContains)
        return value.endsWith(text, anyCase);
    return value.contains(text, anyCase);
}

bool datePasses(const QDateTime& created, const QStringList& criterion) {
    const auto day = [](const QString& text) { return QDate::fromString(text, "M/d/yyyy"); };
    const QString& how = criterion[1];
    if (criterion[0].isEmpty() || how.isEmpty())
        return true;
    if (!created.isValid() || (how == "Range" && criterion[2].isEmpty()))
        return false;
    const QDate date = created.date();
    const QDate first = day(criterion[0]);
    return how == "Equals"         ? date == first
           : how == "Later than"   ? date >= first
           : how == "Earlier than" ? date <= first
                                   : date >= first && date <= day(criterion[2]);
}

} // namespace

TEST_F(JobSearch, FindsByEachCriterionAndComparison) {
    add({"North 1", "Bay Piping", "O'Neil", {{2026, 1, 15}, {0, 0}}});
    add({"North 2", "The Bay", "D'Arcy", {{2026, 1, 15}, {23, 59, 59}}});
    add({"South 1", "Bayview Co", "", {{2026, 3, 2}, {12, 0}}});
    const QStringList north = {"North 1", "North 2"};
    const QStringList all = {"North 1", "North 2", "South 1"};
    const struct {
        Entries entries;
        QStringList ids;
    } cases[] = {
        {{}, all},
        {{.jobID = {"north 1", "Equals"}}, {"North 1"}},
        {{.jobID = {"North", "Starts With"}}, north},
        {{.jobID = {"1", "Ends With"}}, {"North 1", "South 1"}},
        {{.jobID = {"orth", "Ends With"}}, {}},
        {{.jobID = {"orth", "Contains"}}, north},
        {{.jobID = {"North", ""}}, all},
        {{.contractor = {"THE BAY", "Equals"}}, {"North 2"}},
        {{.contractor = {"bay", "Starts With"}}, {"North 1", "South 1"}},
        {{.contractor = {"view", "Ends With"}}, {"South 1"}}, // inside the name; deliberate
        {{.contractor = {"bay", "Contains"}}, all},
        {{.engineer = {"O'Neil", "Equals"}}, {"North 1"}},
        {{.engineer = {"D'", "Starts With"}}, {"North 2"}},
        {{.engineer = {"'Ar", "Ends With"}}, {"North 2"}},
        {{.engineer = {"'", "Contains"}}, north},
        {{.created = {"1/15/2026", "Equals"}}, north},
        {{.created = {"1/15/26", "Later than"}}, all},
        {{.created = {"1/15/2026", "Earlier than"}}, north},
        {{.created = {"1/16/2026", "Range", "3/2/2026"}}, {"South 1"}},
        {{.created = {"1/16/2026", "Range", ""}}, {}},
        {{.created = {"2026-03-02", "Equals"}}, {"South 1"}},
        {{.jobID = {"1", "Ends With"}, .contractor = {"bay", "Starts With"}}, {"North 1", "South 1"}},
        {{.jobID = {"1", "Ends With"}, .engineer = {"n", "Contains"}, .created = {"1/15/2026", "Equals"}},
         {"North 1"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(found(c.entries).join(','), c.ids.join(','))
            << QStringList(c.entries.jobID + c.entries.contractor + c.entries.engineer + c.entries.created)
                   .join('|')
                   .toStdString();
    QLocale::setDefault(QLocale("de_DE"));
    EXPECT_EQ(found({.created = {"02.03.26", "Equals"}}), QStringList("South 1"));
}

TEST_F(JobSearch, ListsWhatAPlainFilterKeeps) {
    std::mt19937 random(7);
    const auto one = [&](const QStringList& of) { return of[int(random() % std::size_t(of.size()))]; };
    const QStringList parts = {"Bay", "bay", "B", "O'Neil", "'", "Stone", "1", "2", "né", "(a)", "\"", "#"};
    const auto word = [&] { return one(parts) + one(parts); };
    const QDate firstDay(2026, 2, 26);
    const auto date = [&] { return firstDay.addDays(int(random() % 6)); };
    for (int i = 0; i < 120; ++i)
        add({word() + QString::number(i), random() % 5 ? word() : "", random() % 5 ? word() : "",
             random() % 9 ? date().startOfDay().addSecs(int(random() % 86400)) : QDateTime()});
    const QStringList comparisons = {"", "Equals", "Starts With", "Ends With", "Contains"};
    const auto text = [&] {
        return QStringList{random() % 2 ? "" : one({one(parts), word()}), one(comparisons)};
    };
    for (int i = 0; i < 400; ++i) {
        Entries e{.jobID = text(), .contractor = text(), .engineer = text()};
        e.created = {random() % 3 ? "" : date().toString("M/d/yyyy"),
                     one({"", "Equals", "Later than", "Earlier than", "Range"}),
                     random() % 4 ? date().toString("M/d/yyyy") : ""};
        if (random() % 4 == 0) // an existing one
            e.jobID[0] = jobs[int(random() % 120)].jobID;
        QStringList kept;
        for (const Job& job : jobs)
            if (textPasses(job.jobID, e.jobID, false) && textPasses(job.contractor, e.contractor, true) &&
                textPasses(job.engineer, e.engineer, true) && datePasses(job.created, e.created))
                kept.append(job.jobID);
        kept.sort();
        ASSERT_EQ(found(e), kept)
            << (e.jobID + e.contractor + e.engineer + e.created).join('|').toStdString();
    }
}
