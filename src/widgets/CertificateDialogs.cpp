#include "widgets/CertificateDialogs.h"

#include "common/Text.h"
#include "widgets/Forms.h"
#include "widgets/TextConversion.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace corvel {

namespace {

constexpr int connectOnce = QDialog::Accepted;
constexpr int alwaysTrust = connectOnce + 1;
constexpr int digitsInGroup = 4;

// As it is read aloud and compared: groups of digits with blanks between them.
QString fingerprintText(const std::string& fingerprint) {
    QString text = displayTextOf(toUpper(fingerprint));
    for (qsizetype end = (text.size() - 1) / digitsInGroup * digitsInGroup; end > 0; end -= digitsInGroup) {
        text.insert(end, QLatin1Char(' '));
    }
    return text;
}

// A new box in a new row of layout, which takes it over.
QLineEdit* addBox(QFormLayout& layout, const char* name, const QString& caption, const QString& text = {}) {
    auto* const box = new QLineEdit;
    setShownOnly(*box);
    box->setMaxLength(std::numeric_limits<int>::max());
    box->setText(text);
    box->setCursorPosition(0);
    layout.addRow(labelFor(*box, name, caption), box);
    return box;
}

// The same for a fingerprint, all of which is in sight.
QLineEdit* addFingerprint(QFormLayout& layout, const char* name, const QString& caption,
                          const std::string& fingerprint = {}) {
    constexpr int digits = 64;
    constexpr int width = digits + digits / digitsInGroup + 2; // with blanks, and room at the ends
    QLineEdit* const box = addBox(layout, name, caption, fingerprintText(fingerprint));
    box->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    box->setMinimumWidth(QFontMetrics(box->font()).horizontalAdvance(QString(width, QLatin1Char('0'))));
    return box;
}

QString serverText(const std::string& host, std::int32_t port) {
    return displayTextOf(host) + QLatin1Char(':') + QString::number(port);
}

// The boxes that show one certificate.
class CertificateBoxes {
  public:
    explicit CertificateBoxes(QFormLayout& layout) {
        std::ranges::transform(fields, boxes_.begin(), [&layout](const Field& field) {
            return addBox(layout, field.name, QDialog::tr(field.caption));
        });
        fingerprint_ = addFingerprint(layout, "txtCertFingerprint", QDialog::tr("SHA-256 &fingerprint:"));
    }

    void show(const Certificate& certificate) const {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            boxes_[i]->setText(displayTextOf(certificate.*fields[i].member));
            boxes_[i]->setCursorPosition(0);
        }
        fingerprint_->setText(fingerprintText(certificate.fingerprint));
        fingerprint_->setCursorPosition(0);
    }

  private:
    struct Field {
        std::string Certificate::*member;
        const char* name;
        const char* caption;
    };
    static constexpr std::array<Field, 5> fields = {{
        {&Certificate::subject, "txtCertSubject", QT_TRANSLATE_NOOP("QDialog", "Su&bject:")},
        {&Certificate::issuer, "txtCertIssuer", QT_TRANSLATE_NOOP("QDialog", "&Issuer:")},
        {&Certificate::names, "txtCertNames", QT_TRANSLATE_NOOP("QDialog", "Host &names:")},
        {&Certificate::validFrom, "txtCertValidFrom", QT_TRANSLATE_NOOP("QDialog", "&Valid from:")},
        {&Certificate::validUntil, "txtCertValidUntil", QT_TRANSLATE_NOOP("QDialog", "Valid &until:")},
    }};

    std::array<QLineEdit*, fields.size()> boxes_ = {};
    QLineEdit* fingerprint_ = nullptr;
};

QLabel* newParagraph(const QString& text, bool isBold) {
    auto* const label = new QLabel(text);
    QFont font = label->font();
    font.setBold(isBold);
    label->setFont(font);
    return label;
}

// One problem a line; where they are many or long, they scroll.
QPlainTextEdit* newProblemsBox(const std::vector<std::string>& problems) {
    QStringList lines;
    for (const std::string& problem : problems) {
        lines.append(cellTextOf(problem));
    }
    auto* const box = new QPlainTextEdit(lines.join(QLatin1Char('\n')));
    box->setReadOnly(true);
    box->setTabChangesFocus(true);
    box->document()->setDocumentMargin(2); // as the line edits have it
    QPalette palette = box->palette();
    palette.setBrush(QPalette::Base, palette.brush(QPalette::Window));
    box->setPalette(palette);
    const auto shownLines = static_cast<int>(std::clamp<qsizetype>(lines.size(), 2, 4));
    const int edges = 2 * (box->frameWidth() + static_cast<int>(box->document()->documentMargin()));
    box->setFixedHeight(shownLines * box->fontMetrics().lineSpacing() + edges);
    return box;
}

class frmCertificateQuestion : public QDialog {
  public:
    explicit frmCertificateQuestion(const CertificateQuestion& question) {
        setObjectName(QStringLiteral("frmCertificateQuestion"));
        setWindowTitle(titleOf(tr("Trust the certificate of \"%1\"?").arg(nameTextOf(question.siteName))));
        // With the main window hidden it may be the last one that closes.
        setAttribute(Qt::WA_QuitOnClose, false);
        const bool isChanged = !question.remembered.empty();
        auto* const rows = new QFormLayout;
        rows->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
        addBox(*rows, "txtCertHost", tr("&Server:"), serverText(question.host, question.port));
        QPlainTextEdit* const problems = newProblemsBox(question.problems);
        rows->addRow(labelFor(*problems, "txtCertProblems", tr("&What is wrong:")), problems);
        CertificateBoxes(*rows).show(question.certificate);
        if (isChanged) {
            addFingerprint(*rows, "txtCertRemembered", tr("&Trusted until now:"), question.remembered);
        }
        auto* const layout = new QVBoxLayout(this);
        layout->addWidget(newParagraph(isChanged
                                           ? tr("The certificate of this server has changed.")
                                           : tr("Nobody whom this computer trusts vouches for this server."),
                                       true));
        layout->addWidget(newParagraph(isChanged ? tr("You trusted another one before. Either the server has "
                                                      "a new certificate, or somebody else answers\n"
                                                      "in its place, who would read your password. Ask "
                                                      "whoever runs the server before you go on.")
                                                 : tr("It may be the one that you want, or somebody else who "
                                                      "answers in its place and would read your\n"
                                                      "password. Compare the fingerprint with the one that "
                                                      "whoever runs the server tells you."),
                                       false));
        layout->addSpacing(layout->spacing());
        layout->addLayout(rows);
        layout->addStretch(1);
        layout->addWidget(createButtons());
    }

  private:
    QDialogButtonBox* createButtons() {
        auto* const buttons = new QDialogButtonBox(this);
        const auto add = [&](const char* name, const QString& caption, QDialogButtonBox::ButtonRole role,
                             int result) {
            QPushButton* const button = buttons->addButton(caption, role);
            button->setObjectName(QLatin1String(name));
            connect(button, &QPushButton::clicked, this, [this, result] { done(result); });
            return button;
        };
        add("cmdCertOnce", tr("Connect once"), QDialogButtonBox::AcceptRole, connectOnce);
        add("cmdCertTrust", tr("Always trust"), QDialogButtonBox::AcceptRole, alwaysTrust);
        QPushButton* const disconnect =
            add("cmdCertDisconnect", tr("Disconnect"), QDialogButtonBox::RejectRole, QDialog::Rejected);
        disconnect->setDefault(true);
        disconnect->setFocus();
        return buttons;
    }
};

class frmCertificate : public QDialog {
  public:
    frmCertificate(const CertificateFacts& facts, std::function<void()> forget, QWidget* parent)
        : QDialog(parent), chain_(facts.chain) {
        setObjectName(QStringLiteral("frmCertificate"));
        setWindowTitle(titleOf(tr("Certificate of \"%1\"").arg(nameTextOf(facts.siteName))));
        auto* const rows = new QFormLayout(this);
        rows->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
        addBox(*rows, "txtCertHost", tr("&Server:"), serverText(facts.host, facts.port));
        addBox(*rows, "txtCertConnection", tr("C&onnection:"), fromCore(facts.connection));
        if (!chain_.empty()) {
            addChain(*rows);
        }
        remembered_ = addFingerprint(*rows, "txtCertRemembered", tr("Always &trusted:"), facts.remembered);
        if (facts.remembered.empty()) {
            remembered_->setText(tr("none"));
        }
        rows->addRow(createButtons(!facts.remembered.empty(), std::move(forget)));
    }

  private:
    void addChain(QFormLayout& rows) {
        constexpr int rowsInSight = 3;
        auto* const list = new QListWidget;
        list->setUniformItemSizes(true);
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        for (const Certificate& certificate : chain_) {
            list->addItem(cellTextOf(certificate.subject));
        }
        list->setFixedHeight(list->sizeHintForRow(0) * rowsInSight + 2 * list->frameWidth());
        rows.addRow(labelFor(*list, "lstCertChain", tr("C&hain:")), list);
        connect(list, &QListWidget::currentRowChanged, this, [this, boxes = CertificateBoxes(rows)](int row) {
            boxes.show(chain_[static_cast<std::size_t>(row)]);
        });
        list->setCurrentRow(0);
    }

    QDialogButtonBox* createButtons(bool hasRemembered, std::function<void()> forget) {
        auto* const buttons = new QDialogButtonBox(this);
        QPushButton* const forgets = buttons->addButton(tr("&Forget"), QDialogButtonBox::ResetRole);
        forgets->setObjectName(QStringLiteral("cmdCertForget"));
        forgets->setToolTip(tr("Ask again when the server next shows this certificate"));
        forgets->setEnabled(hasRemembered);
        QPushButton* const closes = buttons->addButton(tr("Close"), QDialogButtonBox::RejectRole);
        closes->setObjectName(QStringLiteral("cmdClose"));
        closes->setDefault(true);
        closes->setFocus();
        connect(closes, &QPushButton::clicked, this, &QDialog::reject);
        connect(forgets, &QPushButton::clicked, this, [this, forgets, closes, forget = std::move(forget)] {
            forget();
            remembered_->setText(tr("none"));
            closes->setFocus();
            forgets->setEnabled(false);
        });
        return buttons;
    }

    std::vector<Certificate> chain_;
    QLineEdit* remembered_ = nullptr;
};

} // namespace

QDialog* newCertificateQuestion(const CertificateQuestion& question) {
    return new frmCertificateQuestion(question);
}

CertificateAnswer certificateAnswer(int result) {
    return result == connectOnce   ? CertificateAnswer::connectOnce
           : result == alwaysTrust ? CertificateAnswer::alwaysTrust
                                   : CertificateAnswer::disconnect;
}

void openCertificateDialog(QWidget& parent, const CertificateFacts& facts, std::function<void()> forget) {
    openDialog(*new frmCertificate(facts, std::move(forget), &parent));
}

} // namespace corvel
