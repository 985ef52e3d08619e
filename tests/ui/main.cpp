#include <QApplication>

#include <gtest/gtest.h>

// Qt never frees a certificate that came with a renegotiation, and OpenSSL frees what a worker thread noted
// of errors only where the thread is gone before the process ends. Nothing here calls OpenSSL by itself.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:CRYPTO_zalloc\n";
}

// The window tests need no display: they run on Qt's offscreen platform unless told otherwise.
int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
