// An empty window of Qt Widgets and nothing else: the baseline of the program's start.
// Usage: brennoval-empty-window [--once]; with --once it ends as soon as it has painted.

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QTimer>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.setCentralWidget(new QLabel("empty"));
    window.show();
    if (argc > 1)
        QTimer::singleShot(0, [] { QApplication::exit(0); });
    return QApplication::exec();
}
