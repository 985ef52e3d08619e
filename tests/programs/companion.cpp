// What the tests start and end. It leaves a file beside itself that tells of its start: the number of its
// arguments and the directory it runs in. With the argument "wait" it lives until its input ends.
#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QString output = QCoreApplication::applicationFilePath() + QStringLiteral(".out");
    QFile file(output + QStringLiteral(".part"));
    if (!file.open(QIODevice::WriteOnly)) {
        return 1;
    }
    file.write(QStringLiteral("%1 %2").arg(argc - 1).arg(QDir::currentPath()).toUtf8());
    file.rename(output);
    if (QCoreApplication::arguments().contains(QStringLiteral("wait"))) {
        std::getchar();
    }
    return 0;
}
