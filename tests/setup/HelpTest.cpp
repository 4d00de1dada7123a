// The manual and the demonstration: F1 finds its topic, and no link is dead.

#include "core/shell/BrennovalMain.h"
#include "setup/pages/HelpEngine.h"
#include "setup/pages/HelpFolder.h"
#include "tests/support/Driver.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QHelpLink>
#include <QMenu>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextDocument>

#include <functional>

#include <sys/wait.h>
#include <unistd.h>

namespace {

const QString prefix = QStringLiteral("qthelp://ordwick.brennoval.help/brennoval/");

/// Follows every link from a page and from the pages behind it, and records what was reached.
class Walk {
  public:
    explicit Walk(std::function<QByteArray(const QUrl&)> readPage) : read(std::move(readPage)) {}

    void visit(const QUrl& target, const QString& from) {
        const QUrl page = target.adjusted(QUrl::RemoveFragment);
        const QString text = QString::fromUtf8(read(page));
        EXPECT_TRUE(!text.isEmpty() &&
                    (!target.hasFragment() || text.contains("id=\"" + target.fragment() + '"')))
            << from.toStdString() << " leads to " << target.toString().toStdString();
        if (text.isEmpty() || reached.contains(page))
            return;
        reached.insert(page);
        if (!page.path().contains(".htm"))
            return;
        QTextDocument shown;
        shown.setHtml(text);
        EXPECT_GE(shown.toPlainText().size(), 200) << page.toString().toStdString();
        static const QRegularExpression attribute(R"re(\b(?:href|src)="([^"]*)")re");
        for (const auto& match : attribute.globalMatch(text))
            visit(page.resolved(QUrl(match.captured(1))), page.toString());
    }

    QSet<QUrl> reached;

  private:
    std::function<QByteArray(const QUrl&)> read;
};

class Help : public testing::Test {
  protected:
    Help() {
        home.installData();
        Driver::start();
        const QString manual = QCoreApplication::applicationDirPath() + "/Help/brennovalhelp.qch";
        engine.setReadOnly(false); // read-only mode opens only an existing collection
        ready = engine.setupData() && engine.registerDocumentation(manual);
    }
    ~Help() override { Driver::stop(); }
    void SetUp() override { ASSERT_TRUE(ready) << engine.error().toStdString(); }

    TemporaryHome home;
    HelpEngine engine{home.path() + "/help.qhc"};
    bool ready = false;
};

} // namespace

TEST_F(Help, EachContextOfTheMenuAndEachScreenHasOneTopic) {
    QStringList ids = Screens::names() + QStringList{"BrennovalMain", "frmAbout", "frmBrowser", "frmDemo"};
    for (const QAction* action : BrennovalMain::instance()->findChildren<QAction*>())
        if (const int context = action->property("helpContext").toInt(); context != 0)
            ids.append(QString::number(context));
    ids.removeDuplicates();
    EXPECT_TRUE(ids.contains("100") && ids.contains("309"));
    for (const QString& id : ids)
        EXPECT_EQ(engine.documentsForIdentifier(id).size(), 1) << id.toStdString();
}

TEST_F(Help, F1OpensTheTopicOfACommandAndOfAScreen) {
    const auto shows = [this](QWidget* place, const QString& id) {
        QTest::keyClick(place, Qt::Key_F1);
        const Screen* help = Screens::find("frmHelp");
        const auto topics = engine.documentsForIdentifier(id);
        ASSERT_TRUE(help && !topics.isEmpty()) << id.toStdString();
        EXPECT_EQ(help->windowTitle().toStdString(), topics.first().title.toStdString() + " Help")
            << id.toStdString();
        EXPECT_FALSE(QApplication::activePopupWidget());
        Screens::unload("frmHelp");
    };
    for (QMenu* menu : BrennovalMain::instance()->findChildren<QMenu*>())
        for (QAction* action : menu->actions()) {
            const int context = action->property("helpContext").toInt();
            if (context == 0 || !action->isVisible())
                continue;
            action->setEnabled(true); // printing and exporting are disabled until there is something to print
            menu->popup({});
            menu->setActiveAction(action);
            shows(menu, QString::number(context));
        }
    Session::TankClass.write("Hydropneumatic Tank");
    for (const auto& [screen, id] :
         {std::pair("frmJobHeader", "frmJobHeader"), {"frmMetric", "103"}, {"frmResults", "103"}}) {
        ASSERT_TRUE(Screens::open(screen));
        shows(Screens::find(screen), id);
    }
}

TEST_F(Help, ContentsIndexAndLinksResolveAndReachEveryFile) {
    QEventLoop created;
    QObject::connect(engine.contentModel(), &QHelpContentModel::contentsCreated, &created, &QEventLoop::quit);
    engine.contentModel()->createContents({});
    created.exec();
    Walk walk([this](const QUrl& page) { return engine.fileData(page); });
    const std::function<void(const QHelpContentItem*)> visit = [&](const QHelpContentItem* item) {
        for (int i = 0; i < item->childCount(); ++i) {
            walk.visit(item->child(i)->url(), "the contents");
            visit(item->child(i));
        }
    };
    const QHelpContentItem* root = engine.contentModel()->contentItemAt({});
    ASSERT_TRUE(root && root->childCount() > 0);
    visit(root);
    const QDir folder(SOURCE_FOLDER "/assets/Help");
    for (const char* files : {".", "pictures"})
        for (const QString& name : QDir(folder.filePath(files)).entryList({"*.html", "*.css", "*.png"}))
            EXPECT_TRUE(walk.reached.contains(QUrl(prefix + QDir::cleanPath(files + ('/' + name)))))
                << name.toStdString();
    QFile project(folder.filePath("brennovalhelp.qhp"));
    ASSERT_TRUE(project.open(QIODevice::ReadOnly));
    static const QRegularExpression place(R"re(<keyword [^>]*ref="([^"]+)")re");
    for (const auto& keyword : place.globalMatch(QString::fromUtf8(project.readAll())))
        walk.visit(QUrl(prefix + keyword.captured(1)), "the index");
}

// A view closed at once is destroyed while its threads still read.
TEST(HelpEngineOfItsOwn, StopsItsThreadsBeforeFreeingWhatTheyRead) {
    const QTemporaryDir folder;
    bool freed = false;
    QList<QThread*> threads; // outlives the engine, whose destruction reads it
    {
        HelpEngine engine(folder.filePath("help.qhc"));
        engine.setReadOnly(false);
        ASSERT_TRUE(engine.setupData());
        ASSERT_TRUE(
            engine.registerDocumentation(QCoreApplication::applicationDirPath() + "/Help/brennovalhelp.qch"));
        const QObject* owner = static_cast<const QObject*>(engine.contentModel())->parent();
        threads = owner->findChildren<QThread*>();
        ASSERT_EQ(threads.size(), 2);
        for (const QObject* part : engine.children())
            if (part->inherits("QHelpCollectionHandler"))
                QObject::connect(part, &QObject::destroyed, [&] {
                    freed = true;
                    for (const QThread* thread : std::as_const(threads))
                        EXPECT_FALSE(thread->isRunning());
                });
        QCoreApplication::processEvents(); // starts them
    }
    EXPECT_TRUE(freed);
}

TEST(Demo, EveryLinkAndPictureExists) {
    const QString folder = QCoreApplication::applicationDirPath() + "/Demo/";
    Walk walk([](const QUrl& page) {
        QFile file(page.toLocalFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    });
    for (const char* page : {"BrennovalDemo.htm", "ErrorDemo.htm"})
        walk.visit(QUrl::fromLocalFile(folder + page), "the program");
    EXPECT_GT(walk.reached.size(), 15); // the tour has more than that many pictures
}

TEST(HelpFolder, OfAKilledCopyIsRemovedAtTheNextStart) {
    const QTemporaryDir temporary;
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(temporary.path()));
    const QTemporaryDir other; // another program's
    {
        const HelpFolder running;
        const pid_t killed = fork();
        if (killed == 0) {
            const HelpFolder folder;
            QFile file(folder.filePath("help.qhc"));
            _exit(file.open(QIODevice::WriteOnly) ? 0 : 1); // the way a kill leaves it
        }
        int status = 1;
        ASSERT_EQ(waitpid(killed, &status, 0), killed);
        const QStringList both = QDir(temporary.path()).entryList({HelpFolder::Name + '*'});
        EXPECT_EQ(status, 0);
        EXPECT_EQ(both.size(), 2);
        QFile::link(other.path(), temporary.filePath(HelpFolder::Name + "link"));
        removeLeftHelpFolders();
        const QStringList left = QDir(temporary.path()).entryList({HelpFolder::Name + '*'});
        EXPECT_EQ(left.size(), 2) << "the running copy's, and a link that is none";
        EXPECT_TRUE(QFile::exists(running.filePath(HelpFolder::LockName)));
        EXPECT_TRUE(QFile::exists(other.path()));
    }
    EXPECT_EQ(QDir(temporary.path()).entryList({HelpFolder::Name + '*'}).size(), 1) << "the link";
    before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
}
