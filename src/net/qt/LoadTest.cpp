#include "net/qt/LoadTest.h"

#include "app/mdlMain.h"
#include "widgets/TextConversion.h"

#include <QAbstractButton>
#include <QLineEdit>

namespace corvel {

namespace {

// In milliseconds: the wait after a round that could send nothing, so that a slow or closed connection does
// not cost a whole processor.
constexpr int idleWait = 1;

} // namespace

LoadTest::LoadTest(mdlMain& program, const QAbstractButton& whileChecked, QObject* parent)
    : QObject(parent), program_(program), whileChecked_(whileChecked) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &LoadTest::nextRound);
}

void LoadTest::start(QLineEdit& entry) {
    entry.setText(QStringLiteral("site test list"));
    entry_ = &entry;
    timer_.start(0);
}

void LoadTest::stop() {
    timer_.stop();
}

void LoadTest::nextRound() {
    const int site = program_.currentSite();
    if (!whileChecked_.isChecked() || !entry_ || site == 0) {
        return;
    }
    const bool sent =
        program_.sendTestCommand(site, bytesOf(entry_->text(), program_.site(site).session.encoding));
    entry_->selectAll();
    timer_.start(sent ? 0 : idleWait);
}

} // namespace corvel
