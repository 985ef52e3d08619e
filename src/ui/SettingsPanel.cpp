#include "ui/SettingsPanel.h"

#include "widgets/TextConversion.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

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
    QPushButton* const rehash = addButton(*ofServer, "cmdConfigRehash", tr("&Rehash config"),
                                          tr("Makes the server read its configuration again."));
    connect(rehash, &QPushButton::clicked, this, [&program] {
        if (program.currentSite() > 0) {
            program.sendConsoleCommand(program.currentSite(), "SITE config rehash");
        }
    });
    QPushButton* const test =
        addButton(*ofServer, "Command1", tr("Load &test"),
                  tr("Sends a test command over and over, for as long as \"Always on top\" is checked."));
    connect(test, &QPushButton::clicked, this, &SettingsPanel::testWanted);

    int widest = 0;
    for (QPushButton* const button : {settings, rehash, test}) {
        widest = std::max(widest, button->sizeHint().width() + fontMetrics().averageCharWidth() * 2);
    }
    for (QPushButton* const button : {settings, rehash, test}) {
        button->setMinimumWidth(widest);
    }
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(window);
    layout->addWidget(server);
    layout->addStretch(1);
}

void SettingsPanel::startTest(QLineEdit& entry) {
    entry.setText(QStringLiteral("site test list"));
    entry_ = &entry;
    test_.start(0);
}

void SettingsPanel::nextRound() {
    const int site = program_.currentSite();
    if (!chkAlwaysOnTop_->isChecked() || !entry_ || site == 0) {
        return;
    }
    const bool sent =
        program_.sendTestCommand(site, bytesOf(entry_->text(), program_.site(site).session.encoding));
    entry_->selectAll();
    test_.start(sent ? 0 : idleWait);
}

} // namespace corvel
