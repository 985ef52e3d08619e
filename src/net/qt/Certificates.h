#pragma once

#include "common/Ports.h"

#include <QFuture>
#include <QList>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslError>

#include <string>
#include <vector>

namespace corvel {

// Certificates of servers: what a connection asks of them, who vouches for one, and what is said about it.

// Whether the handshake leaves it to errorsOf who vouches for a certificate.
//
// OpenSSL looks at a certificate that comes with a renegotiation, but Qt hears of it only where an authority
// is missing, and ends the connection then if it is another one. So the socket knows no authority at all, and
// who vouches for the first certificate is asked of the system beside it.
bool isVerifiedBeside();

// For the client of a handshake: TLS 1.2 or later, and a certificate that is verified.
QSslConfiguration clientConfiguration();

// What is wrong with a chain for a host, asked beside the user-interface thread: the authorities are read
// anew, which takes a tenth of a second.
QFuture<QList<QSslError>> errorsOf(const QList<QSslCertificate>& chain, const QString& host);

// Of the errors of a handshake those that errorsOf leaves out: whether a certificate is meant for servers,
// and what Qt has no number for, such as keys that are too short.
QList<QSslError> unverifiedBeside(QList<QSslError> errors);

// What a chain says, in its order.
std::vector<Certificate> recordsOf(const QList<QSslCertificate>& chain);

// Each error once, as a sentence; UTF-8. host: for which the certificate was wanted.
std::vector<std::string> problemsOf(const QList<QSslError>& errors, const QString& host);

} // namespace corvel
