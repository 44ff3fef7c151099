#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QRegularExpression>

#include <algorithm>

namespace {

QStringList words(const char* text)
{
    return QString::fromLatin1(text).simplified().split(QLatin1Char(' '));
}

const QStringList languages = words("zh hk en pl jp");
const QStringList captionedNames =
    words("capture document barcode synthesis CardSynthesis videocapture "
          "continuousShooting OCR IDCardReader print PDF PdfEx sign fingerprint "
          "bookscan FaceVerify Laohua");
const QStringList commonNames =
    words("lumro hover pressed view_bar_hover view_bar_sep ThumbnailRtf thumbnailPdf ThumbnailVideo more "
          "docCapture barcode mergeImage mergeCard video multicapture ocr readcard print pdf PdfEx sign "
          "fingerprint bookscan deskew deskewex manualDeskew adapt fullscreen zoomin zoomout rotateleft "
          "rotateright videofreeze skin minimize maximize restore close arrow_down check");

QString imagePath(const QString& group, const QString& name, const char* density = "")
{
    return QStringLiteral(":/images/%1/images/%1/%2%3.png").arg(group, name, QLatin1String(density));
}

// The part of the picture in which anything is drawn.
QRect inkedArea(const QImage& image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 8)
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

void expectThreeDensities(const QString& group, const QString& name)
{
    const QImage single(imagePath(group, name));
    EXPECT_FALSE(inkedArea(single).isEmpty()) << qPrintable(imagePath(group, name));
    const QImage twice(imagePath(group, name, "@2x"));
    EXPECT_EQ(twice.size(), single.size() * 2) << qPrintable(imagePath(group, name));
    EXPECT_EQ(QImage(imagePath(group, name, "@3x")).size(), single.size() * 3) << qPrintable(name);
    EXPECT_FALSE(inkedArea(twice).isEmpty()) << qPrintable(imagePath(group, name));
}

} // namespace

TEST(Images, AreThereInThreeDensities)
{
    Q_INIT_RESOURCE(images);
    for (const QString& name : commonNames)
        expectThreeDensities(QStringLiteral("common"), name);
    for (const QString& language : languages) {
        for (const QString& name : captionedNames + words("setting browse"))
            expectThreeDensities(language, name);
    }
}

TEST(Images, ButtonsHaveOneIconForAllLanguagesAndAWholeCaptionBelow)
{
    QVector<QImage> icons, faces;
    for (const QString& name : captionedNames) {
        for (const QString& language : languages) {
            QImage image;
            for (const char* density : {"@3x", "@2x", ""}) {
                const QString path = imagePath(language, name, density);
                image = QImage(path);
                // Text that runs into the border is text cut off.
                EXPECT_TRUE(image.rect().adjusted(1, 1, -1, -1).contains(inkedArea(image)))
                    << qPrintable(path);
                const int foot = image.height() * 3 / 5;
                const QRect caption = inkedArea(image.copy(0, foot, image.width(), image.height() - foot));
                EXPECT_GT(caption.width(), image.width() / 6) << qPrintable(path);
                EXPECT_GT(caption.height(), image.height() / 12) << qPrintable(path);
            }
            const QImage icon = image.copy(0, 0, image.width(), image.height() / 2);
            EXPECT_EQ(icons.contains(icon), language != languages[0]) << qPrintable(name + language);
            EXPECT_TRUE(language == languages[0] || icons.last() == icon) << qPrintable(name + language);
            icons.append(icon);
            EXPECT_FALSE(faces.contains(image)) << qPrintable(language);
            if (name == QLatin1String("FaceVerify"))
                faces.append(image);
        }
    }
}

// A wrong path shows as an empty button, without any message.
TEST(Images, ExistWhereverTheSourcesNameThem)
{
    const QRegularExpression named(QStringLiteral(":/images/(\\w+)/images/(\\w+)/(\\w+)\\.png"));
    int found = 0;
    for (const char* folder : {"app", "core", "ui", "view", "outputs"}) {
        QDirIterator files(QStringLiteral(SOURCE_FOLDER "/") + QLatin1String(folder),
                           QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
            for (auto matches = named.globalMatch(QString::fromUtf8(file.readAll())); matches.hasNext();
                 ++found) {
                const QString path = matches.next().captured();
                EXPECT_TRUE(QFile::exists(path))
                    << qPrintable(path + QStringLiteral(" in ") + file.fileName());
            }
        }
    }
    EXPECT_GT(found, 0);
}
