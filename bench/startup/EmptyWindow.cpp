#include <QApplication>
#include <QTimer>
#include <QWidget>

// The bound for Corvel's start and size: a window with nothing in it and a timer that does nothing.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QWidget window;
    window.setWindowTitle(QStringLiteral("Corvel's empty window"));
    window.resize(1000, 640);
    window.show();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, [] {});
    timer.start(50);
    return QApplication::exec();
}
