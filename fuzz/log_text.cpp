// Lines of the log, into which other programs and files have put their words.
#include "platform/linux/process/LogText.h"

#include <QList>
#include <QString>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

bool isShown(char32_t character) {
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    constexpr std::size_t atMost = 100;
    const auto line = tavro::logText({reinterpret_cast<const char*>(bytes), size}, atMost);
    const auto text = QString::fromStdString(line);
    if (line.size() > atMost || text.toStdString() != line || !std::ranges::all_of(text.toUcs4(), &isShown))
        std::abort();
    return 0;
}
