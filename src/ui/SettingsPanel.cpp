#include "ui/SettingsPanel.h"

#include "widgets/TextConversion.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace corvel {

namespace {

// In milliseconds: the wait after a round that could send nothing, so that a slow or closed connection does
// not cost a whole processor.
constexpr int idleWait = 1;

// A button with its explanation beside it.
QPushButton* addButton(QGridLayout& layout, const char* name, const QString& caption,
                       const QString& explanation) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(QLatin1String(name));
    button->setAccessibleDescription(explanation);
    auto* const label = new QLabel(explanation);
    label->setWordWrap(true);
    const int row = layout.rowCount();
    layout.addWidget(button, row, 0);
    layout.addWidget(label, row, 1);
    layout.setColumnStretch(1, 1);
    return button;
}

} // namespace

SettingsPanel::SettingsPanel(mdlMain& program, QWidget* parent) : QWidget(parent), program_(program) {
    test_.setSingleShot(true);
    connect(&test_, &QTimer::timeout, this, &SettingsPanel::nextRound);
    auto* const window = new QGroupBox(tr("Window"));
    auto* const ofWindow = new QGridLayout(window);
    chkAlwaysOnTop_ = new QCheckBox(tr("&Always on top"));
    chkAlwaysOnTop_->setObjectName(QStringLiteral("chkAlwaysOnTop"));
    ofWindow->addWidget(chkAlwaysOnTop_, 0, 0, 1, 2);
    QPushButton* const settings = addButton(*ofWindow, "cmdSettings", tr("S&ettings..."),
                                            tr("The columns and colors of the activity list."));
    connect(settings, &QPushButton::clicked, this, &SettingsPanel::settingsWanted);

    auto* const server = new QGroupBox(tr("Server"));
    auto* const ofServer = new QGridLayout(server);
    rehash_ = addButton(*ofServer, "cmdConfigRehash", tr("&Rehash config"),
                        tr("Makes the server read its configuration again."));
    connect(rehash_, &QPushButton::clicked, this, [&program] {
        if (program.currentSite() > 0) {
            program.sendConsoleCommand(program.currentSite(), "SITE config rehash");
        }
    });
    auto* const testing = new QGroupBox(tr("For testing"));
    auto* const ofTest = new QGridLayout(testing);
    command1_ =
        addButton(*ofTest, "Command1", tr("Load &test"),
                  tr("Sends a test command over and over, for as long as \"Always on top\" is checked."));
    connect(command1_, &QPushButton::clicked, this, &SettingsPanel::testWanted);
    testState_ = new QLabel;
    testState_->setObjectName(QStringLiteral("lblTestState"));
    testState_->setWordWrap(true);
    ofTest->addWidget(testState_, ofTest->rowCount(), 0, 1, 2);

    const std::array buttons = {settings, rehash_, command1_};
    int widest = 0;
    for (QPushButton* const button : buttons) {
        widest = std::max(widest, button->sizeHint().width() + fontMetrics().averageCharWidth() * 2);
    }
    for (QPushButton* const button : buttons) {
        button->setMinimumWidth(widest);
    }
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(window);
    layout->addWidget(server);
    layout->addStretch(1);
    layout->addWidget(testing);
    showSite(0);
}

void SettingsPanel::showSite(int site) {
    rehash_->setEnabled(site > 0);
    command1_->setEnabled(site > 0);
}

void SettingsPanel::startTest(QLineEdit& entry) {
    entry.setText(QStringLiteral("site test list"));
    entry_ = &entry;
    sent_ = 0;
    test_.start(0);
}

void SettingsPanel::showTest() {
    QString text =
        sent_ == 1 ? tr("1 command sent.") : tr("%1 commands sent.").arg(QLocale().toString(sent_));
    if (test_.isActive()) {
        text += QLatin1Char(' ') + tr("Uncheck \"Always on top\" to stop.");
    } else if (sent_ == 0) {
        text += QLatin1Char(' ') + tr("\"Always on top\" is not checked.");
    }
    testState_->setText(text);
}

void SettingsPanel::nextRound() {
    const int site = program_.currentSite();
    if (!chkAlwaysOnTop_->isChecked() || !entry_ || site == 0) {
        showTest();
        return;
    }
    const bool sent =
        program_.sendTestCommand(site, bytesOf(entry_->text(), program_.site(site).session.encoding));
    entry_->selectAll();
    test_.start(sent ? 0 : idleWait);
    sent_ += sent ? 1 : 0;
    showTest();
}

} // namespace corvel
