#include "ui/AboutBox.h"

#include "widgets/DialogParts.h"
#include "widgets/Icons.h"

#include <QCoreApplication>
#include <QMessageBox>

namespace corvel {

void openAboutBox(QWidget& parent) {
    auto* const box = new QMessageBox(&parent);
    box->setObjectName(QStringLiteral("frmAbout"));
    box->setWindowTitle(QMessageBox::tr("About Corvel"));
    box->setIconPixmap(icon("corvel").pixmap(QSize(64, 64), parent.devicePixelRatioF()));
    box->setTextFormat(Qt::PlainText);
    box->setText(QStringLiteral("Corvel %1").arg(QStringLiteral(CORVEL_VERSION)));
    box->setInformativeText(QMessageBox::tr("Administers FTP servers over their control connections.") +
                            QStringLiteral("\n\n") +
                            QMessageBox::tr("Runs with Qt %1.").arg(QLatin1String(qVersion())));
    box->setStandardButtons(QMessageBox::Ok);
    openDialog(*box);
}

} // namespace corvel
