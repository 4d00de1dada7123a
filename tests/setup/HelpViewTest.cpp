// The help window: what a search finds, pictures in full size, the manual on paper and as a PDF.

#include "core/shell/BrennovalMain.h"
#include "setup/pages/HelpEngine.h"
#include "tests/support/Driver.h"

#include <gtest/gtest.h>

#include <QHelpLink>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextLayout>

#include <functional>

namespace {

/// The help window at a topic.
class HelpWindow : public testing::Test {
  protected:
    HelpWindow() {
        home.installData();
        dialogs = &Driver::start();
        Driver::command("mnuHelpSub");
        page = Driver::control<QTextBrowser>("frmHelp", "pageText");
        box = Driver::control<QLineEdit>("frmHelp", "searchBox");
        found = Driver::control<QListWidget>("frmHelp", "found");
    }
    ~HelpWindow() override { Driver::stop(); }
    void SetUp() override { ASSERT_TRUE(page && box && found); }

    /// The titles that a search finds, best first.
    QStringList search(const QString& words) {
        found->clear();
        box->setText(words);
        QTest::keyClick(box, Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([this] { return found->count() > 0; }, 30000)) << words.toStdString();
        QStringList titles;
        for (int i = 0; i < found->count(); ++i)
            titles.append(found->item(i)->text());
        return titles;
    }

    TemporaryHome home;
    ScriptedDialogs* dialogs = nullptr;
    QTextBrowser* page = nullptr;
    QLineEdit* box = nullptr;
    QListWidget* found = nullptr;
};

QByteArray run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(60000) && process.exitCode() == 0) << program.toStdString();
    return process.readAllStandardOutput();
}

/// Where a picture of the page in view is, in the view's coordinates.
QPoint pictureIn(QTextBrowser* page) {
    for (QTextBlock block = page->document()->begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part)
            if (part.fragment().charFormat().isImageFormat()) {
                QTextCursor before(page->document());
                before.setPosition(part.fragment().position());
                page->setTextCursor(before);
                page->ensureCursorVisible();
                constexpr int inside = 10; // pixels
                return page->cursorRect(before).bottomLeft() + QPoint(inside, -inside);
            }
    return {};
}

} // namespace

TEST_F(HelpWindow, SearchKnowsTheWordsOfTheTrade) {
    const struct {
        const char* typed;
        const char* title;
        int within; // the first so many rows
    } cases[] = {
        {"antifreeze", "Story: antifreeze, and the package that feeds it", 1},
        {"booster", "Story: a booster pump", 1},
        {"booster pump", "Story: a booster pump", 1},
        {"buffer", "Hydropneumatic tanks", 4},
        {"backup", "Backups and ways back", 1},
        {"relief valve", "Story: a water heater", 20},
        {"safety valve", "Pressures in a building", 20},
        {"fill pressure", "Pressures in a building", 4},
        {"water hammer", "Story: a main with a quick valve", 20},
        {"surge", "Shock arrestor tanks", 9},
        {"altitude", "Pressures in a building", 20},
        {"DHW", "Story: a water heater", 20},
        {"pressure vessels", "Pressures in a building", 9},
        {"cut sheet", "Submittals", 1},
        {"drawdown", "Drawdown", 1},
        {"glossary", "Glossary", 1},
        // Signs of the engine's own language are nothing but signs.
        {"\"setup", "User setup", 1},
        {"setup* AND (", "User setup", 20},
    };
    for (const auto& row : cases) {
        const QStringList titles = search(row.typed);
        const auto place = titles.indexOf(QString::fromLatin1(row.title));
        EXPECT_TRUE(place >= 0 && place < row.within)
            << row.typed << ": " << titles.join(" | ").toStdString();
    }
    EXPECT_EQ(search("zebra").join('|').toStdString(), "No topic holds these words.");
}

// A page found by a synonym shows the word that it has instead.
TEST_F(HelpWindow, SearchOpensAtTheWordThatThePageHas) {
    const QStringList titles = search("antifreeze");
    const auto row = titles.indexOf(QStringLiteral("Job conditions"));
    ASSERT_GE(row, 0) << titles.join(" | ").toStdString();
    emit found->itemActivated(found->item(int(row)));
    EXPECT_EQ(page->textCursor().selectedText().toLower().toStdString(), "glycol");
}

TEST_F(HelpWindow, IndexLeadsFromTheWordsOfTheTrade) {
    HelpEngine engine(home.path() + "/help.qhc");
    engine.setReadOnly(false);
    ASSERT_TRUE(engine.setupData() && engine.registerDocumentation(QCoreApplication::applicationDirPath() +
                                                                   "/Help/brennovalhelp.qch"));
    const std::pair<const char*, const char*> words[] = {{"Antifreeze", "story-glycol.html"},
                                                         {"Booster pump", "story-hydropneumatic.html"},
                                                         {"Relief valve", "pressures.html"},
                                                         {"Fill pressure", "pressures.html"},
                                                         {"Water hammer", "shock.html"},
                                                         {"Buffer for a pump", "story-hydropneumatic.html"},
                                                         {"Backup", "backups.html"},
                                                         {"Altitude", "pressures.html"},
                                                         {"Compression tank", "story-steel.html"},
                                                         {"Surge", "story-shock.html"},
                                                         {"Precharge on site", "pressures.html"},
                                                         {"Static height", "pressures.html"},
                                                         {"Backflow preventer", "story-thermal.html"}};
    for (const auto& [word, file] : words) {
        const QList<QHelpLink> pages = engine.documentsForKeyword(word);
        ASSERT_EQ(pages.size(), 1) << word;
        EXPECT_EQ(pages.first().url.fileName().toStdString(), file) << word;
    }
}

TEST_F(HelpWindow, PictureEnlargesAtAClickAndBackReturns) {
    page->window()->resize(900, 620);
    emit page->anchorClicked(QUrl("story-expansion.html"));
    const QUrl story = page->source();
    ASSERT_TRUE(story.path().endsWith("story-expansion.html"));
    const QPoint picture = pictureIn(page);
    ASSERT_FALSE(picture.isNull());
    EXPECT_LT(page->document()->idealWidth(), 700);
    EXPECT_EQ(page->anchorAt(picture).toStdString(), "pictures/heating-system.png");
    QTest::mouseClick(page->viewport(), Qt::LeftButton, {}, picture);
    EXPECT_TRUE(page->source().path().endsWith("pictures/heating-system.png"));
    EXPECT_GE(page->document()->idealWidth(), 1100);
    EXPECT_EQ(Screens::find("frmHelp")->windowTitle().toStdString(), "Picture - Brennoval Help");
    Driver::press("frmHelp", "bttnBack");
    EXPECT_EQ(page->source(), story);
}

TEST_F(HelpWindow, ManualIsOnePdfWithTheContentsAsItsOutline) {
    const QString path = home.path() + "/manual.pdf";
    dialogs->files = {path};
    Driver::press("frmHelp", "bttnExport");
    ASSERT_EQ(Driver::report().toStdString(), "");
    const QString whole = QString::fromUtf8(run("pdftohtml", {"-xml", "-i", "-stdout", path}));
    const QString lines = whole.section("<outline>", 1);
    HelpEngine engine(home.path() + "/help.qhc");
    engine.setReadOnly(false);
    ASSERT_TRUE(engine.setupData() && engine.registerDocumentation(QCoreApplication::applicationDirPath() +
                                                                   "/Help/brennovalhelp.qch"));
    QEventLoop created;
    QObject::connect(engine.contentModel(), &QHelpContentModel::contentsCreated, &created, &QEventLoop::quit);
    engine.contentModel()->createContents({});
    created.exec();
    QStringList contents;
    const std::function<void(const QHelpContentItem*, int)> visit = [&](const QHelpContentItem* item,
                                                                        int depth) {
        for (int i = 0; i < item->childCount(); ++i) {
            contents.append(QString::number(depth) + ' ' + item->child(i)->title());
            visit(item->child(i), depth + 1);
        }
    };
    visit(engine.contentModel()->contentItemAt({}), 0);
    QStringList outline;
    int depth = 0;
    int steelPage = 0;
    for (const QString& line : lines.split('\n')) {
        if (line.contains("<outline>") || line.contains("</outline>"))
            depth += line.contains("</") ? -1 : 1;
        if (!line.startsWith("<item"))
            continue;
        const QString title = line.section('>', 1).section("</item", 0, 0).replace("&amp;", "&");
        outline.append(QString::number(depth) + ' ' + title);
        if (title == "An old steel tank")
            steelPage = line.section('"', 1, 1).toInt();
    }
    EXPECT_GT(contents.size(), 60);
    EXPECT_EQ(outline.join('\n').toStdString(), contents.join('\n').toStdString());
    // An entry leads to the sheet on which its page begins, and the table of contents says the same number.
    const QString number = QString::number(steelPage);
    const QString sheet = QString::fromUtf8(run("pdftotext", {"-f", number, "-l", number, path, "-"}));
    EXPECT_TRUE(sheet.startsWith("Story: an old steel tank")) << sheet.left(100).toStdString();
    EXPECT_TRUE(sheet.trimmed().endsWith(number));
    const QString front = QString::fromUtf8(run("pdftotext", {"-layout", "-l", "2", path, "-"}));
    EXPECT_TRUE(front.contains(QRegularExpression("An old steel tank +" + number + "\n")));
    EXPECT_TRUE(whole.contains(QRegularExpression('#' + number + "\">[^<]*An old steel tank</a>")))
        << "it leads there, too";
    // No heading ends a sheet; a text below 1070 is clipped, and one further to the right stands in a table.
    const QRegularExpression heading(R"re(^top="10[0-6]\d" left="95" .*><b>[^<]*</b></text>)re");
    int sheetsRead = 0;
    for (const QString& one : whole.section("<outline>", 0, 0).split("</page>")) {
        const QStringList texts = one.split("<text ").mid(1); // the last is the sheet's number
        sheetsRead += texts.size() > 2 ? 1 : 0;
        const QString last = texts.value(texts.size() - 2);
        EXPECT_FALSE(heading.match(last).hasMatch()) << last.toStdString();
    }
    EXPECT_GT(sheetsRead, 100);
    EXPECT_GT(whole.count("<a href="), contents.size() + 100) << "and so do the links of the pages";
}

TEST_F(HelpWindow, PrintsATopicOrTheManual) {
    const QString topic = home.path() + "/topic.pdf";
    const QString part = home.path() + "/part.pdf";
    emit page->anchorClicked(QUrl("drawdown.html"));
    dialogs->prints = {{topic, 0, 0}, {part, 3, 4}, {QString(), 0, 0}};
    Driver::press("frmHelp", "bttnPrint");
    EXPECT_TRUE(run("pdftotext", {topic, "-"}).startsWith("Drawdown"));
    EXPECT_TRUE(run("pdfinfo", {topic}).contains("Pages:           1\n"));
    Driver::press("frmHelp", "bttnPrintAll");
    EXPECT_TRUE(run("pdfinfo", {part}).contains("Pages:           2\n"));
    EXPECT_TRUE(run("pdftotext", {part, "-"}).startsWith("Brennoval"));
    Driver::press("frmHelp", "bttnPrintAll"); // cancelled
    // A picture in full size prints as one.
    const QString picture = home.path() + "/picture.pdf";
    emit page->anchorClicked(QUrl("pictures/heating-system.png"));
    dialogs->prints = {{picture, 0, 0}};
    Driver::press("frmHelp", "bttnPrint");
    EXPECT_TRUE(run("pdfimages", {"-list", picture}).contains("1100"));
    EXPECT_EQ(Driver::report().toStdString(), "");
}

// Large letters and small displays leave little room for a table's columns.
TEST_F(HelpWindow, BreaksNoWordInANarrowTable) {
    page->setFixedWidth(300);
    Driver::settle();
    int lines = 0;
    for (QTextBlock block = page->document()->begin(); block.isValid(); block = block.next())
        for (int i = 1; i < block.layout()->lineCount(); ++i, ++lines) {
            const int start = block.layout()->lineAt(i).textStart();
            EXPECT_FALSE(block.text()[start - 1].isLetter() && block.text()[start].isLetter())
                << block.text().toStdString();
        }
    EXPECT_GT(lines, 20);
}

TEST_F(HelpWindow, ManualThatCannotBeWrittenIsReported) {
    dialogs->files = {home.path() + "/none/manual.pdf", QString()};
    Driver::press("frmHelp", "bttnExport");
    EXPECT_TRUE(Driver::report().contains("Path/File access error")) << Driver::report().toStdString();
    Screens::unload("frmError");
    Driver::press("frmHelp", "bttnExport"); // cancelled
    EXPECT_EQ(Driver::report().toStdString(), "");
}
