#include "widgets/ImageLists.h"

#include "support/TemporaryDirectory.h"

#include <QImage>

#include <gtest/gtest.h>

#include <string>

namespace corvel::test {
namespace {

QImage shown(const ImageLists& lists, std::string_view key) {
    return lists.image(key).pixmap(16, 16).toImage().convertedTo(QImage::Format_ARGB32);
}

TEST(ImageLists, AKeyReplacesItsOwnImage) {
    const TemporaryDirectory directory;
    QImage picture(16, 16, QImage::Format_ARGB32);
    picture.fill(Qt::red);
    Settings settings;
    settings.images.back() = directory.fileNamed("größer.png");
    ASSERT_TRUE(picture.save(QString::fromStdString(settings.images.back())));
    const ImageLists builtIn;
    ImageLists lists;
    lists.replaceImages(settings);
    EXPECT_EQ(shown(lists, "tab-results"), picture);
    EXPECT_EQ(shown(lists, "tray-idle"), shown(builtIn, "tray-idle"));
}

} // namespace
} // namespace corvel::test
