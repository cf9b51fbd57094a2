#include "platform/linux/storage/QtImages.h"

#include "picture/PictureHeader.h"
#include "platform/linux/storage/PictureProcess.h"
#include "platform/simulated/process/SimulatedLog.h"
#include "support/TemporaryFolder.h"
#include "support/WaitUntil.h"
#include "support/machines/ProcessEvents.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QProcess>
#include <QtEndian>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>

namespace tavro {
namespace {

using Bytes = QByteArray;

/// Red above, grey below.
QImage picture() {
    QImage image(64, 48, QImage::Format_RGB888);
    image.fill(qRgb(200, 30, 30));
    std::memset(image.scanLine(24), 200, 24 * static_cast<std::size_t>(image.bytesPerLine()));
    return image;
}

Bytes encoded(const char* format, bool isProgressive = false, const QImage& image = picture()) {
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(isProgressive);
    EXPECT_TRUE(writer.write(image));
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

/// A HEIC picture that announces another size.
Bytes resized(Bytes heic, quint32 side) {
    for (const qsizetype offset : {8, 12})
        qToBigEndian(side, heic.data() + heic.indexOf("ispe") + offset);
    return heic;
}

class QtImagesTest : public testing::Test {
protected:
    std::optional<Image> read(const Bytes& bytes, const std::string& name = "picture.png") {
        const auto file = folder.path() / name;
        std::ofstream(file, std::ios::binary) << bytes.toStdString();
        return images.contentsOf(file);
    }
    /// In the background; none also when the handler is not called within a deadline.
    std::optional<Image> load(const std::filesystem::path& file, QtImages& from) {
        std::optional<std::optional<Image>> loaded;
        from.load(file, Images::Detail::whole, [&](const auto& image) { loaded = image; });
        EXPECT_FALSE(loaded) << "inside the call";
        EXPECT_TRUE(waitUntil([&] { return loaded.has_value(); }, &processEvents));
        return loaded.value_or(std::nullopt);
    }
    static void expectPicture(const Image& image) {
        EXPECT_EQ(image.pixelWidth, 64);
        ASSERT_EQ(image.pixelHeight, 48);
        for (const auto& [y, expected] : {std::pair(10, qRgb(200, 30, 30)), {40, qRgb(200, 200, 200)}}) {
            quint32 color = 0;
            std::memcpy(&color, image.pixels.get() + static_cast<std::size_t>(y) * image.bytesPerRow + 80, 4);
            EXPECT_EQ(qAlpha(color), 255);
            EXPECT_NEAR(qRed(color), qRed(expected), 12);
            EXPECT_NEAR(qGreen(color), qGreen(expected), 12);
            EXPECT_NEAR(qBlue(color), qBlue(expected), 12);
        }
    }

    int count = 0;
    QCoreApplication application{count, nullptr};
    TemporaryFolder folder;
    Journal journal;
    SimulatedLog log{journal};
    QtImages images{TAVRO_PICTURE_BINARY, log};
};

TEST_F(QtImagesTest, CompletePicturesAreRecognisedByContent) {
    const auto png = encoded("png"), jpeg = encoded("jpeg"), progressive = encoded("jpeg", true),
               heif = heic();
    const auto other = (folder.path() / "other.png").string();
    ASSERT_TRUE(QImage(64, 48, QImage::Format_RGB32).save(QString::fromStdString(other)));
    const auto svg =
        "\xef\xbb\xbf<?xml version='1.0'?>\n<svg xmlns='http://www.w3.org/2000/svg' width='64' height='48'>"
        "<path d='M0 0h64v24H0z' fill='#c81e1e'/><path d='M0 24h64v24H0z' fill='#c8c8c8'/>"
        "<text y='24'>text</text><image href='file://" +
        Bytes::fromStdString(other) + "' width='64' height='48'/></svg>";
    const Bytes thumbnail("\xff\xe1\0\x08\xff\xd8\xff\xd9zz", 10);
    const struct {
        const char* what;
        Bytes bytes;
        bool isPicture = false;
    } cases[] = {
        {"PNG", png, true},
        {"JPEG", jpeg, true},
        {"JPEG in several scans", progressive, true},
        {"JPEG with more behind it", jpeg + Bytes(100, 'x'), true},
        {"JPEG with a thumbnail", jpeg.left(2) + thumbnail + jpeg.mid(2), true},
        {"WebP", encoded("webp"), true},
        {"HEIC", heif, true},
        {"BMP, which the toolkit could decode, too", encoded("bmp")},
        {"TIFF", encoded("tiff")},
        {"ICO", encoded("ico")},
        {"SVG, without a text and what is in another file", svg, true},
        {"SVG of an area", Bytes(svg).replace("width='64' height='48'><path", "viewBox='0 0 64 48'><path"),
         true},
        {"SVG without a size", Bytes(svg).replace("width='64' height='48'><path", "><path")},
        {"an SVG that is too large",
         Bytes(svg).replace("width='64' height='48'><path", "width='16385' height='48'><path")},
        {"half an SVG", svg.left(svg.size() / 2)},
        {"AVIF", Bytes(heif).replace("heic", "avif")},
        {"the beginning of a WebP", "RIFF"},
        {"an empty file", ""},
        {"half a PNG", png.left(png.size() / 2)},
        {"a JPEG without its end", jpeg.left(jpeg.size() - 2)},
        {"half a JPEG", jpeg.left(jpeg.size() / 2)},
        {"a JPEG's beginning", jpeg.left(3)},
        {"a JPEG's header", jpeg.left(jpeg.indexOf("\xff\xda") + 4)},
        {"half a JPEG with a whole thumbnail", jpeg.left(2) + thumbnail + jpeg.mid(2, jpeg.size() / 2)},
        {"one scan of several", progressive.left(progressive.lastIndexOf("\xff\xda"))},
        {"a JPEG whose segment leads out of it", jpeg.left(2) + Bytes("\xff\xe0\xff\xff", 4)},
        {"half a HEIC", heif.left(heif.size() - 100)},
        {"a HEIC of two gigapixels", resized(heif, 46000)},
        {"too wide", encoded("png", false, QImage(16385, 1, QImage::Format_Mono))},
        {"too high", encoded("png", false, QImage(1, 16385, QImage::Format_Mono))},
        {"a gigabyte", encoded("png", false, QImage(16384, 16384, QImage::Format_Mono))},
    };
    for (const auto& [what, bytes, isPicture] : cases)
        for (const auto* name : {"picture.png", "picture.heic"}) {
            SCOPED_TRACE(what);
            QtImages other(TAVRO_PICTURE_BINARY, log);
            for (const auto& image : {read(bytes, name), load(folder.path() / name, other)}) {
                EXPECT_EQ(image.has_value(), isPicture);
                if (image)
                    expectPicture(*image);
            }
        }
    EXPECT_TRUE(log.takeDiagnosed().empty());
}

TEST_F(QtImagesTest, PicturesAreKeptAsPng) {
    const auto image = read(encoded("jpeg"));
    ASSERT_TRUE(image);
    std::optional<std::string> png;
    images.pngRepresentation(*image, [&](const auto& data) { png = data; });
    ASSERT_TRUE(waitUntil([&] { return png.has_value(); }, &processEvents));
    ASSERT_TRUE(png->starts_with("\x89PNG\r\n\x1a\n"));
    expectPicture(read(Bytes::fromStdString(*png)).value());
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
    EXPECT_EQ(load(file, images)->pixels, second->pixels);
    std::vector<std::optional<Image>> atOnce;
    QtImages others(TAVRO_PICTURE_BINARY, log);
    for (int time = 0; time < 2; ++time)
        others.load(file, Images::Detail::whole, [&](const auto& image) { atOnce.push_back(image); });
    ASSERT_TRUE(waitUntil([&] { return atOnce.size() == 2; }, &processEvents));
    EXPECT_TRUE(atOnce[0] && atOnce[0]->pixels == atOnce[1]->pixels);
    std::filesystem::remove(file);
    EXPECT_FALSE(images.contentsOf(file));
    const std::weak_ptr pixels = read(encoded("jpeg"))->pixels;
    EXPECT_FALSE(pixels.expired()) << "kept for whoever asks next";
    EXPECT_TRUE(waitUntil([&] { return pixels.expired(); }, &processEvents)) << "but not for long";
}

TEST_F(QtImagesTest, SizesAreLimitedPerSide) {
    read(encoded("png"));
    for (const auto& [bounds, expected] : {std::pair(QStringList(), QSize(64, 48)),
                                           {{"10", "100"}, {10, 48}},
                                           {{"100", "10"}, {64, 10}},
                                           {{"8", "6"}, {8, 6}}}) {
        PictureProcess process;
        ASSERT_TRUE(process.decode(TAVRO_PICTURE_BINARY, folder.path() / "picture.png", bounds, {}));
        process.wait();
        const auto image = process.image();
        EXPECT_EQ(QSize(image->pixelWidth, image->pixelHeight), expected);
    }
}

TEST_F(QtImagesTest, AHangingDecoderHoldsNothingUp) {
    read(encoded("png"));
    const auto program = folder.path() / "program";
    std::ofstream(program) << "#!/bin/sh\nexec sleep 1000";
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    bool isDone = false;
    QtImages(program, log).load(folder.path() / "picture.png", Images::Detail::whole, [&](const auto&) {
        isDone = true;
    }); // and the machine ends
    EXPECT_FALSE(isDone);
}

TEST_F(QtImagesTest, PipesAndBrokenLinksAreNotWaitedFor) {
    ASSERT_EQ(::mkfifo((folder.path() / "pipe.png").c_str(), 0600), 0);
    std::filesystem::create_symlink(folder.path() / "nowhere", folder.path() / "link.png");
    for (const auto* name : {"pipe.png", "link.png"})
        EXPECT_FALSE(images.contentsOf(folder.path() / name) || load(folder.path() / name, images)) << name;
}

TEST_F(QtImagesTest, MissingHelpersAndResourcesAreLogged) {
    read(encoded("png"));
    QtImages victim(folder.path() / "missing", log);
    EXPECT_FALSE(victim.contentsOf(folder.path() / "picture.png"));
    EXPECT_FALSE(load(folder.path() / "picture.png", victim));
    EXPECT_EQ(images.named("menubar-none"), std::nullopt);
    EXPECT_EQ(images.named("menubar-on"), NamedImage{"menubar-on"});
    EXPECT_EQ(log.takeDiagnosed().size(), 3u);
}

TEST_F(QtImagesTest, ACompromisedDecoderIsNotTrusted) {
    const auto answer = [](PictureHeader header, qsizetype bytes) {
        return Bytes(reinterpret_cast<const char*>(&header), sizeof header) + Bytes(bytes, 'x');
    };
    const struct {
        const char* what;
        Bytes answer;
        const char* end = "exit 0";
        bool isPicture = false;
        std::size_t lines = 0;
    } cases[] = {
        {"a picture", answer({3, 2, 1}, 24), "exit 0", true},
        {"one without a filter", answer({3, 2, 0}, 24), "exit 0", true, 1},
        {"a failure", answer({3, 2, 1}, 24), "exit 1"},
        {"an end by a signal", answer({3, 2, 1}, 24), "kill -KILL $$"},
        {"nothing", ""},
        {"half a header", answer({3, 2, 1}, 0).left(8)},
        {"too little", answer({3, 2, 1}, 23)},
        {"too much", answer({3, 2, 1}, 25)},
        {"more than it announced, and no end", answer({3, 2, 1}, 25), "exec cat /dev/zero"},
        {"no end of a header", "x", "exec cat /dev/zero"},
        {"no width", answer({0, 2, 1}, 0)},
        {"no height", answer({3, 0, 1}, 0)},
        {"too wide", answer({16385, 1, 1}, 65540)},
        {"too high", answer({1, 16385, 1}, 65540)},
        {"a gigabyte", answer({16384, 16384, 1}, 0), "exec cat /dev/zero"},
        {"a size that overflows 32 bits", answer({0x8000, 0x8000, 1}, 0)},
        {"a size that overflows 64 bits", answer({0xffffffff, 0xffffffff, 1}, 4)},
    };
    const auto program = folder.path() / "program";
    read(encoded("png"));
    for (const auto& [what, bytes, end, isPicture, lines] : cases) {
        SCOPED_TRACE(what);
        std::ofstream(folder.path() / "answer", std::ios::binary) << bytes.toStdString();
        std::ofstream(program) << "#!/bin/sh\ncat '" << (folder.path() / "answer").string() << "'\n" << end;
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        QtImages victim(program, log), other(program, log);
        const auto file = folder.path() / "picture.png";
        for (const auto& image : {victim.contentsOf(file), load(file, other)}) {
            EXPECT_EQ(image.has_value(), isPicture);
            const std::string expected(24, 'x');
            EXPECT_TRUE(!image || std::memcmp(image->pixels.get(), expected.data(), expected.size()) == 0);
        }
        EXPECT_EQ(log.takeDiagnosed().size(), 2 * lines);
    }
}

// Its answer is larger than a pipe holds, so that it waits for us.
TEST_F(QtImagesTest, TheDecoderIsConfinedWhenItAnswers) {
    read(encoded("png", false, picture().scaled(1000, 1000)));
    QProcess decoder;
    decoder.setStandardInputFile(QString::fromStdString((folder.path() / "picture.png").string()));
    decoder.start(TAVRO_PICTURE_BINARY, QStringList());
    ASSERT_TRUE(decoder.waitForReadyRead());
    const auto process = static_cast<pid_t>(decoder.processId());
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    EXPECT_NE(std::string(std::istreambuf_iterator<char>(status), {}).find("\nSeccomp:\t2\n"),
              std::string::npos);
    const std::tuple<__rlimit_resource, rlim_t> bounds[] = {
#ifndef __SANITIZE_ADDRESS__
        {RLIMIT_AS, rlim_t{4} << 30},
#endif
        {RLIMIT_CPU, 60},
        {RLIMIT_NOFILE, 64},
        {RLIMIT_FSIZE, 0},
        {RLIMIT_CORE, 0},
    };
    for (const auto& [resource, most] : bounds) {
        rlimit bound{};
        ASSERT_EQ(::prlimit(process, resource, nullptr, &bound), 0);
        EXPECT_LE(bound.rlim_max, most) << resource;
    }
    decoder.kill();
    decoder.waitForFinished();
}

} // namespace
} // namespace tavro
