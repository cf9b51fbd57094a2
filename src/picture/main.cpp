// Decodes the picture file on its standard input, and writes a PictureHeader and the pixels to standard
// output:
//   tavropro-picture [WIDTH HEIGHT | COMPOSITION] <FILE
// A picture that is larger than these bounds is made smaller; a composition makes one screen's background of
// it, or of an empty file. Exits with 1, and without a word, when there is
// no whole picture within the bounds. A program of its own: the decoders take megabytes that TavroPRO need
// not keep for a moment's use, and a hostile file finds itself in a process that can do nothing but compute,
// and ends with it.

#include "picture/CompositionPainting.h"
#include "picture/Confinement.h"
#include "picture/Decoders.h"
#include "picture/PictureHeader.h"

#include <QFile>
#include <QStringList>

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string_view>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

using tavro::PictureHeader;

/// Each side by itself, since the picture is stretched where it is shown.
QImage within(QSize atMost, const QImage& picture) {
    const auto size = picture.size().boundedTo(atMost);
    return size == picture.size() ? picture
                                  : picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

bool write(QImage picture, bool isConfined) {
    if (picture.isNull())
        return false;
    const PictureHeader header{static_cast<std::uint32_t>(picture.width()),
                               static_cast<std::uint32_t>(picture.height()), isConfined};
    if (!header.isWithinBounds())
        return false;
    const auto image = std::move(picture).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return !image.isNull() && std::fwrite(&header, sizeof header, 1, stdout) == 1 &&
           std::fwrite(image.constBits(), header.sizeOfPixels(), 1, stdout) == 1 && std::fflush(stdout) == 0;
}

/// What is asked for, of the file's bytes.
std::function<QImage(std::string_view)> parse(const QStringList& arguments) {
    if (const auto composition = tavro::Composition::parse(arguments))
        return [composition](std::string_view file) {
            const auto picture = tavro::decode(
                file, [&](QSize own, bool isDrawing) { return composition->loadedSize(own, isDrawing); });
            return picture.isNull() && !file.empty() ? QImage() : draw(*composition, picture);
        };
    const auto bound = [&](qsizetype index) {
        return index < arguments.size() ? std::max(arguments[index].toInt(), 1) : INT_MAX;
    };
    return [atMost = QSize(bound(0), bound(1))](std::string_view file) {
        return within(atMost, tavro::decode(file, [](QSize own, bool) { return own; }));
    };
}

} // namespace

int main(int argc, char** argv) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments += argv[i];
    const auto work = parse(arguments);
    QFile file;
    if (!file.open(STDIN_FILENO, QIODevice::ReadOnly))
        return EXIT_FAILURE;
    const auto size = file.size();
    const auto* bytes = reinterpret_cast<const char*>(file.map(0, size)); // read when looked at
    if (!bytes && size > 0)
        return EXIT_FAILURE;
    tavro::loadDecoders();
    const bool isConfined = tavro::confineThisProcess();
    const bool isDone = write(work({bytes, static_cast<std::size_t>(size)}), isConfined);
    std::_Exit(isDone ? EXIT_SUCCESS
                      : EXIT_FAILURE); // what libraries do at the end may need more than is allowed
}
