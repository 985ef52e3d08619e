#pragma once

#include "common/Ports.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class QDialog;
class QWidget;

namespace corvel {

// The dialogs about the certificate of a server. Whatever a server put into its certificate is shown as plain
// text that can be copied, and never makes a dialog larger.

// A dialog that asks whether to go on, frmCertificateQuestion, not shown yet and without a parent: modal
// boxes of the main window do not hold it up, nor it them. It belongs to the caller, and does not keep the
// program running.
QDialog* newCertificateQuestion(const CertificateQuestion& question);

// The answer, of the result that its signal finished gives.
CertificateAnswer certificateAnswer(int result);

// What is known of the certificates of a site. Texts are in the server's bytes unless a comment says
// otherwise.
struct CertificateFacts {
    std::string siteName;
    std::string host; // as configured
    std::int32_t port = 0;
    std::string connection;         // how it is encrypted, or that it is not; UTF-8
    std::vector<Certificate> chain; // of the server; its own first
    std::string remembered;         // the fingerprint that is trusted always; empty for none
};

// Opens a dialog with these facts, frmCertificate, over parent; returns at once. forget: trusts the
// remembered fingerprint no more.
void openCertificateDialog(QWidget& parent, const CertificateFacts& facts, std::function<void()> forget);

} // namespace corvel
