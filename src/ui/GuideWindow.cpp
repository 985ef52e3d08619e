#include "ui/GuideWindow.h"

#include "ui/desktop/Desktop.h"

#include <QCoreApplication>
#include <QDialog>
#include <QFileInfo>
#include <QImage>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace corvel {

namespace {

// Where it lies beside the program, as packed, installed and built.
constexpr std::array places = {"docs/guide.md", "../share/doc/corvel/guide.html", "../../docs/guide.md"};

// The name by which the guide's own links call a heading.
QString anchorOf(const QString& heading) {
    QString anchor;
    for (const QChar character : heading.toLower()) {
        if (character.isLetterOrNumber()) {
            anchor += character;
        } else if (character.isSpace() || character == '-'_L1) {
            anchor += '-'_L1;
        }
    }
    return anchor;
}

class GuideBrowser : public QTextBrowser {
  public:
    explicit GuideBrowser(const QString& path) {
        setObjectName(u"txtGuide"_s);
        setAccessibleName(QDialog::tr("Guide"));
        setOpenExternalLinks(true);
        setSource(QUrl::fromLocalFile(path));
        nameHeadings();
    }

  protected:
    // Pictures are as wide as the text at most.
    QVariant loadResource(int type, const QUrl& name) override {
        QVariant resource = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource) {
            return resource;
        }
        QImage image = resource.canConvert<QImage>() ? resource.value<QImage>() : QImage();
        if (image.isNull()) {
            image.loadFromData(resource.toByteArray());
        }
        const double widest = fontMetrics().averageCharWidth() * textWidth;
        if (image.width() > widest) {
            image =
                image.scaledToWidth(static_cast<int>(widest * devicePixelRatioF()), Qt::SmoothTransformation);
            image.setDevicePixelRatio(devicePixelRatioF());
        }
        return image;
    }

  public:
    static constexpr int textWidth = 100; // in characters

  private:
    // What is read from Markdown has headings without names. Not told to anybody: a document that changes is
    // read anew at the next link, and they would be gone.
    void nameHeadings() {
        const QSignalBlocker silence(document());
        for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
            if (block.blockFormat().headingLevel() > 0) {
                QTextCursor cursor(block);
                cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
                QTextCharFormat format;
                format.setAnchor(true);
                format.setAnchorNames({anchorOf(block.text())});
                cursor.mergeCharFormat(format);
            }
        }
    }
};

} // namespace

QString guidePath(const QString& programDirectory) {
    for (const char* const place : places) {
        const QFileInfo file(programDirectory + '/'_L1 + QLatin1String(place));
        if (file.isFile()) {
            return file.canonicalFilePath();
        }
    }
    return {};
}

QString showGuide(QWidget& owner) {
    if (auto* const open = owner.findChild<QDialog*>(u"frmGuide"_s)) {
        bringToFront(*open);
        return {};
    }
    const QString path = guidePath(QCoreApplication::applicationDirPath());
    if (path.isEmpty()) {
        return QDialog::tr("The guide is not where it belongs: docs/guide.md beside the program.");
    }
    auto* const window = new QDialog(&owner);
    window->setObjectName(u"frmGuide"_s);
    window->setWindowTitle(QDialog::tr("Using Corvel"));
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowFlag(Qt::WindowMaximizeButtonHint);
    auto* const layout = new QVBoxLayout(window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new GuideBrowser(path));
    window->resize(window->fontMetrics().averageCharWidth() * (GuideBrowser::textWidth + 8),
                   std::max(400, owner.height()));
    window->show();
    return {};
}

} // namespace corvel
