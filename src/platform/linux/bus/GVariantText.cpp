#include "platform/linux/bus/GVariantText.h"

#include <QStringList>

#include <optional>

namespace tavro {

namespace {

QChar meaningOf(QChar escaped) {
    switch (escaped.unicode()) {
    case 'a':
        return '\a';
    case 'b':
        return '\b';
    case 'f':
        return '\f';
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case 'v':
        return '\v';
    default:
        return escaped;
    }
}

/// Takes the first text away from the rest. Either quote may stand around it.
std::optional<QString> takeText(QStringView& rest) {
    if (!rest.startsWith('\'') && !rest.startsWith('"'))
        return std::nullopt;
    const auto quote = rest.front();
    QString text;
    for (qsizetype i = 1; i < rest.size(); ++i) {
        if (rest[i] == quote) {
            rest = rest.mid(i + 1);
            return text;
        }
        if (rest[i] != '\\') {
            text += rest[i];
            continue;
        }
        if (++i == rest.size())
            break;
        // What cannot be printed is a number, of four digits or of eight.
        const qsizetype digits = rest[i] == 'u' ? 4 : rest[i] == 'U' ? 8 : 0;
        if (digits == 0) {
            text += meaningOf(rest[i]);
            continue;
        }
        bool isNumber = false;
        const char32_t character = rest.mid(i + 1, digits).toUInt(&isNumber, 16);
        if (!isNumber)
            break;
        text += QString::fromUcs4(&character, 1);
        i += digits;
    }
    return std::nullopt;
}

QVariant parseTexts(QStringView rest) {
    QStringList texts;
    while (const auto text = takeText(rest)) {
        texts += *text;
        if (rest == QStringView(u"]"))
            return texts;
        if (!rest.startsWith(u", "))
            break;
        rest = rest.mid(2);
    }
    return {};
}

} // namespace

QVariant parseGVariant(QStringView text) {
    if (text == QStringView(u"true") || text == QStringView(u"false"))
        return text.front() == 't';
    if (text == QStringView(u"@as []")) // nothing in it shows its type
        return QStringList();
    if (text.startsWith('['))
        return parseTexts(text.mid(1));
    const auto single = takeText(text);
    return single && text.isEmpty() ? QVariant(*single) : QVariant();
}

} // namespace tavro
