#include "Resources.h"

#include <QtGui/QImage>
#include <QtTest/QtTest>

namespace {

const QSize logoSize(371, 81);
const QSize stateSize(38, 25);
const QSize normalSize(50, 60);
const QSize pressedSize(52, 62);

const QStringList media{"HDD", "MOVE", "USIM", "TOKEN", "SMCARD", "PHONE"};

QImage mediaImage(const QString& medium, const QString& variant)
{
    return QImage(":/png/image/" + medium + "_" + variant + ".png");
}

/** The share of the picture, in percent, whose pixels are more than half opaque. */
int percentCovered(const QImage& image)
{
    int covered = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            covered += qAlpha(image.pixel(x, y)) > 127;
    return covered * 100 / (image.width() * image.height());
}

/** Opaque pixels of the caption, the lowest quarter of a media image, within a range of grey. */
int captionPixels(const QImage& image, int darkest, int lightest)
{
    int count = 0;
    for (int y = image.height() * 3 / 4; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            count += qAlpha(pixel) > 127 && qGray(pixel) >= darkest && qGray(pixel) <= lightest;
        }
    return count;
}

} // namespace

class ResourcesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initResources();
        initResources();
    }

    void bitmapHasTheSizeOfItsLabel_data()
    {
        QTest::addColumn<QSize>("size");
        for (const char* logo : {"Logo", "BriskSealLogo", "NTSLogo", "Logo_Bank", "Logo_Gov", "Logo_Stock"})
            QTest::newRow(logo) << logoSize;
        for (const char* state : {"Cert_Valid", "Cert_Invalid", "cert_Renewal"})
            QTest::newRow(state) << stateSize;
    }

    void bitmapHasTheSizeOfItsLabel()
    {
        QFETCH(QSize, size);
        const QImage image(QString(":/bmp/image/%1.bmp").arg(QTest::currentDataTag()), "BMP");
        QCOMPARE(image.size(), size);
        QVERIFY(!image.hasAlphaChannel());
    }

    /** The viewer asks for Cert_Renewal.bmp and shows no image: hosts rely on the two spellings. */
    void renewalImageIsFoundUnderItsSmallLetterOnly()
    {
        QVERIFY(QFile::exists(":/bmp/image/cert_Renewal.bmp"));
        QVERIFY(!QFile::exists(":/bmp/image/Cert_Renewal.bmp"));
    }

    void mediaImageFillsItsIconSize_data()
    {
        QTest::addColumn<QString>("medium");
        for (const QString& medium : media)
            QTest::newRow(qPrintable(medium)) << medium;
    }

    void mediaImageFillsItsIconSize()
    {
        QFETCH(QString, medium);
        QCOMPARE(mediaImage(medium, "N").size(), normalSize);
        QCOMPARE(mediaImage(medium, "NE").size(), normalSize);
        QCOMPARE(mediaImage(medium, "P").size(), pressedSize);
        QCOMPARE(mediaImage(medium, "PE").size(), pressedSize);
    }

    /** A pressed button must be told from the others at a glance: its tile covers the picture. */
    void pressedImageIsATileAndTheNormalOneIsClear()
    {
        for (const QString& medium : media)
            for (const char* const language : {"", "E"}) {
                QVERIFY(percentCovered(mediaImage(medium, QString("P") + language)) > 95);
                QVERIFY(percentCovered(mediaImage(medium, QString("N") + language)) < 60);
            }
    }

    /** The desktop's colours may be light or dark, and the caption is part of the picture. */
    void captionCanBeReadOnLightAndDarkButtons()
    {
        for (const QString& medium : media)
            for (const char* const variant : {"N", "NE"}) {
                const QImage image = mediaImage(medium, variant);
                QVERIFY2(captionPixels(image, 0, 110) > 40, qPrintable(medium));
                QVERIFY2(captionPixels(image, 200, 255) > 40, qPrintable(medium));
            }
    }

    void everyMediaImageIsItsOwn()
    {
        QList<QImage> seen;
        for (const QString& medium : media)
            for (const char* const variant : {"N", "NE", "P", "PE"}) {
                const QImage image = mediaImage(medium, variant);
                QVERIFY2(!seen.contains(image), qPrintable(QString(medium + "_" + variant)));
                seen.append(image);
            }
        QCOMPARE(seen.size(), 24);
    }

    void treeHoldsTheIconsAndTheAnimation()
    {
        for (const QString& medium : media)
            QVERIFY2(QFile::exists(":/icons/image/" + medium + ".ico"), qPrintable(medium));
        QVERIFY(QFile(":/icons/image/Loading.gif").size() > 0);
    }

    void productIconExistsInEverySize()
    {
        for (const int size : {16, 24, 32, 48, 64, 128, 256})
            QCOMPARE(QImage(QString(":/icons/image/Quillgate_%1.png").arg(size)).size(), QSize(size, size));
    }
};

QTEST_GUILESS_MAIN(ResourcesTest)
#include "ResourcesTest.moc"
