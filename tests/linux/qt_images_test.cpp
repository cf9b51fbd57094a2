#include "platform/linux/storage/QtImages.h"

#include "platform/simulated/process/SimulatedLog.h"
#include "support/TemporaryFolder.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImage>
#include <QImageWriter>
#include <QProcess>
#include <QtEndian>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sys/stat.h>

namespace tavro {
namespace {

using Bytes = QByteArray;

/// Red above, blue below.
QImage picture(int width = 64, int height = 48) {
    QImage image(width, height, QImage::Format_RGB888);
    image.fill(qRgb(200, 30, 30));
    for (int y = height / 2; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(30, 30, 200));
    return image;
}

Bytes encoded(const char* format, bool isProgressive = false) {
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(isProgressive);
    EXPECT_TRUE(writer.write(picture()));
    return buffer.data();
}

Bytes heic() {
    QProcess converter;
    converter.start("convert", {"png:-", "heic:-"});
    converter.write(encoded("png"));
    converter.closeWriteChannel();
    EXPECT_TRUE(converter.waitForFinished());
    return converter.readAllStandardOutput();
}

/// The picture with another number after a name in it.
Bytes patched(Bytes bytes, const char* name, qsizetype offset, quint32 number) {
    const auto position = bytes.indexOf(name);
    EXPECT_GE(position, 0);
    qToBigEndian(number, bytes.data() + position + offset);
    return bytes;
}

/// A picture of any size, as far as its header goes: 8 bits of red, green, blue and alpha.
Bytes announcedPng(quint32 width, quint32 height) {
    Bytes head("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\0\0\0\0\0\x08\x06\0\0\0", 29);
    qToBigEndian(width, head.data() + 16);
    qToBigEndian(height, head.data() + 20);
    quint32 crc = ~quint32{0};
    for (const char byte : head.mid(12)) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xedb88320 : 0);
    }
    Bytes end(4, 0);
    qToBigEndian(~crc, end.data());
    return head + end + Bytes("\0\0\0\x0aIDATx\x9c\x63\0\0\0\x02\0\x01\x48\xaf\xa4\x71", 22);
}

class QtImagesTest : public testing::Test {
protected:
    std::optional<Image> read(const Bytes& bytes, const std::string& name = "picture.png") {
        const auto file = folder.path() / name;
        std::ofstream(file, std::ios::binary) << bytes.toStdString();
        return images.contentsOf(file);
    }
    static void expectPicture(const std::optional<Image>& image) {
        ASSERT_TRUE(image);
        ASSERT_EQ(image->pixelWidth, 64);
        ASSERT_EQ(image->pixelHeight, 48);
        for (const auto& [y, expected] : {std::pair(10, qRgb(200, 30, 30)), {40, qRgb(30, 30, 200)}}) {
            quint32 color = 0;
            std::memcpy(&color, image->pixels.get() + static_cast<std::size_t>(y) * image->bytesPerRow + 80,
                        4);
            EXPECT_EQ(qAlpha(color), 255);
            EXPECT_NEAR(qRed(color), qRed(expected), 12);
            EXPECT_NEAR(qGreen(color), qGreen(expected), 12);
            EXPECT_NEAR(qBlue(color), qBlue(expected), 12);
        }
    }

    int m_count = 0;
    QCoreApplication m_application{m_count, nullptr};
    TemporaryFolder folder;
    Journal journal;
    SimulatedLog log{journal};
    QtImages images{TAVRO_HEIF_BINARY, log};
};

TEST_F(QtImagesTest, PicturesAreReadByTheirContentsAndKeptAsPng) {
    const auto jpeg = encoded("jpeg");
    const Bytes thumbnail("\xff\xe1\0\x08\xff\xd8\xff\xd9zz", 10);
    const struct {
        const char* what;
        const char* name;
        Bytes bytes;
    } cases[] = {
        {"PNG", "picture.png", encoded("png")},
        {"PNG under another name", "picture.heic", encoded("png")},
        {"JPEG", "picture.jpg", jpeg},
        {"JPEG in several scans", "picture.jpeg", encoded("jpeg", true)},
        {"JPEG with more behind it", "picture.jpg", jpeg + Bytes(100, 'x')},
        {"JPEG with a thumbnail", "picture.jpg", jpeg.left(2) + thumbnail + jpeg.mid(2)},
        {"HEIC", "picture.heic", heic()},
        {"HEIC under another name", "picture.png", heic()},
    };
    for (const auto& [what, name, bytes] : cases) {
        SCOPED_TRACE(what);
        const auto image = read(bytes, name);
        expectPicture(image);
        if (!image)
            continue;
        const auto png = images.pngRepresentation(*image);
        ASSERT_TRUE(png);
        EXPECT_TRUE(png->starts_with("\x89PNG\r\n\x1a\n"));
        expectPicture(read(Bytes::fromStdString(*png), "stored.png"));
    }
    EXPECT_TRUE(log.takeDiagnosed().empty());
}

TEST_F(QtImagesTest, AFileIsDecodedAgainOnlyWhenItHasChanged) {
    const auto file = folder.path() / "picture.png";
    const auto first = read(encoded("png"));
    ASSERT_TRUE(first);
    EXPECT_EQ(images.contentsOf(file)->pixels, first->pixels);
    const auto other = folder.path() / "other.png";
    std::filesystem::copy(file, other);
    std::filesystem::rename(other, file);
    const auto second = images.contentsOf(file);
    ASSERT_TRUE(second);
    EXPECT_NE(second->pixels, first->pixels);
    std::filesystem::remove(file);
    EXPECT_FALSE(images.contentsOf(file));
}

TEST_F(QtImagesTest, WhatIsNoWholePictureWithinTheBoundsIsNone) {
    const auto png = encoded("png"), jpeg = encoded("jpeg"), progressive = encoded("jpeg", true),
               heif = heic();
    const Bytes thumbnail("\xff\xe1\0\x08\xff\xd8\xff\xd9zz", 10);
    const struct {
        const char* what;
        Bytes bytes;
    } cases[] = {
        {"PNG's beginning", png.left(20)},
        {"half a PNG", png.left(png.size() / 2)},
        {"a JPEG without its end", jpeg.left(jpeg.size() - 2)},
        {"half a JPEG", jpeg.left(jpeg.size() / 2)},
        {"a JPEG's beginning", jpeg.left(3)},
        {"a JPEG's header", jpeg.left(jpeg.indexOf("\xff\xda") + 4)},
        {"half a JPEG with a whole thumbnail", jpeg.left(2) + thumbnail + jpeg.mid(2, jpeg.size() / 2)},
        {"one scan of several", progressive.left(progressive.lastIndexOf("\xff\xda"))},
        {"a JPEG whose segment leads out of it", jpeg.left(2) + Bytes("\xff\xe0\xff\xff", 4)},
        {"half a HEIC", heif.left(heif.size() - 100)},
        {"a HEIC's beginning", heif.left(60)},
        {"a HEIC of two gigapixels", patched(patched(heif, "ispe", 8, 46000), "ispe", 12, 46000)},
        {"a PNG that is too wide", announcedPng(16385, 1)},
        {"a PNG that is too high", announcedPng(1, 16385)},
        {"a PNG of a gigabyte", announcedPng(16384, 16384)},
        {"a PNG of no size", announcedPng(0, 0)},
    };
    for (const auto& [what, bytes] : cases) {
        SCOPED_TRACE(what);
        EXPECT_FALSE(read(bytes));
    }
    ASSERT_EQ(::mkfifo((folder.path() / "pipe.png").c_str(), 0600), 0);
    std::filesystem::create_symlink(folder.path() / "nowhere", folder.path() / "link.png");
    for (const auto* name : {"pipe.png", "link.png"})
        EXPECT_FALSE(images.contentsOf(folder.path() / name)) << name;
}

TEST_F(QtImagesTest, WithoutItsProgramAHeicIsNoneAndALineSaysSo) {
    const QtImages without(folder.path() / "missing", log);
    std::ofstream(folder.path() / "a.heic", std::ios::binary) << heic().toStdString();
    EXPECT_FALSE(without.contentsOf(folder.path() / "a.heic"));
    EXPECT_EQ(log.takeDiagnosed().size(), 1u);
}

} // namespace
} // namespace tavro
