#include "net/qt/Certificates.h"

#include "widgets/TextConversion.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QPromise>
#include <QSslSocket>
#include <QThreadPool>

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace corvel {

namespace {

QString timeText(const QDateTime& time) {
    return time.toUTC().toString(QStringLiteral("yyyy-MM-dd HH:mm 'UTC'"));
}

// As "CN=home, O=Example".
std::string ownerText(const QSslCertificate& certificate, const QList<QByteArray>& attributes,
                      QStringList (QSslCertificate::*values)(const QByteArray&) const) {
    QStringList parts;
    for (const QByteArray& attribute : attributes) {
        parts.append(QString::fromUtf8(attribute) + QLatin1Char('=') +
                     (certificate.*values)(attribute).join(QLatin1Char('+')));
    }
    return toCore(parts.join(QStringLiteral(", ")));
}

Certificate recordOf(const QSslCertificate& certificate) {
    return {
        .subject = ownerText(certificate, certificate.subjectInfoAttributes(), &QSslCertificate::subjectInfo),
        .issuer = ownerText(certificate, certificate.issuerInfoAttributes(), &QSslCertificate::issuerInfo),
        .names = toCore(certificate.subjectAlternativeNames().values().join(QStringLiteral(", "))),
        .validFrom = toCore(timeText(certificate.effectiveDate())),
        .validUntil = toCore(timeText(certificate.expiryDate())),
        .fingerprint = certificate.digest(QCryptographicHash::Sha256).toHex().toStdString()};
}

QString problemText(const QSslError& error, const QString& host) {
    switch (error.error()) {
    case QSslError::SelfSignedCertificate:
        return QCoreApplication::translate("Certificates", "It is self-signed.");
    case QSslError::CertificateExpired:
        return QCoreApplication::translate("Certificates", "It expired on %1.")
            .arg(timeText(error.certificate().expiryDate()));
    case QSslError::CertificateNotYetValid:
        return QCoreApplication::translate("Certificates", "It is not valid before %1.")
            .arg(timeText(error.certificate().effectiveDate()));
    case QSslError::HostNameMismatch:
        return QCoreApplication::translate("Certificates", "It is for another name than %1.").arg(host);
    case QSslError::SelfSignedCertificateInChain:
    case QSslError::UnableToGetLocalIssuerCertificate:
    case QSslError::UnableToGetIssuerCertificate:
    case QSslError::UnableToVerifyFirstCertificate:
    case QSslError::CertificateUntrusted:
        return QCoreApplication::translate("Certificates", "It comes from an unknown authority.");
    case QSslError::InvalidPurpose:
        return QCoreApplication::translate("Certificates", "It is not meant for servers.");
    default:
        return error.errorString();
    }
}

} // namespace

bool isVerifiedBeside() {
    return QSslSocket::activeBackend() == QLatin1String("openssl");
}

QSslConfiguration clientConfiguration() {
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setProtocol(QSsl::TlsV1_2OrLater);
    configuration.setPeerVerifyMode(QSslSocket::VerifyPeer);
    if (isVerifiedBeside()) {
        configuration.setCaCertificates({});
    }
    return configuration;
}

QFuture<QList<QSslError>> errorsOf(const QList<QSslCertificate>& chain, const QString& host) {
    const auto promise = std::make_shared<QPromise<QList<QSslError>>>();
    QThreadPool::globalInstance()->start([promise, chain, host] {
        promise->start();
        promise->addResult(QSslCertificate::verify(chain, host));
        promise->finish();
    });
    return promise->future();
}

QList<QSslError> unverifiedBeside(QList<QSslError> errors) {
    errors.removeIf([](const QSslError& error) {
        return error.error() != QSslError::InvalidPurpose && error.error() != QSslError::UnspecifiedError;
    });
    return errors;
}

std::vector<Certificate> recordsOf(const QList<QSslCertificate>& chain) {
    std::vector<Certificate> records;
    records.reserve(static_cast<std::size_t>(chain.size()));
    std::ranges::transform(chain, std::back_inserter(records), recordOf);
    return records;
}

std::vector<std::string> problemsOf(const QList<QSslError>& errors, const QString& host) {
    std::vector<std::string> problems;
    for (const QSslError& error : errors) {
        std::string problem = toCore(problemText(error, host));
        if (std::ranges::find(problems, problem) == problems.end()) {
            problems.push_back(std::move(problem));
        }
    }
    return problems;
}

} // namespace corvel
