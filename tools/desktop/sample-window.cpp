// A window that looks like an application at work: the same pixels on every run, and nothing
// that moves or blinks. It keeps the private desktop company.
//   sample-window --class NAME --title TEXT --geometry WxH+X+Y [--minimized] [--kind slides|editor|chat]

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QWidget>

#include <algorithm>
#include <cstdio>
#include <map>
#include <optional>
#include <string>

namespace {

using PaintContent = void (*)(QPainter&, const QRect&);

struct Appearance {
    QColor iconColor;
    QString iconLetter;
    PaintContent paint;
};

QFont font(int pixels, QFont::Weight weight = QFont::Normal,
           const QString& family = QStringLiteral("DejaVu Sans")) {
    QFont result(family);
    result.setPixelSize(pixels);
    result.setWeight(weight);
    return result;
}

void text(QPainter& painter, const QRect& place, const QString& words, const QColor& color, const QFont& face,
          int flags = Qt::AlignLeft | Qt::AlignVCenter) {
    painter.setFont(face);
    painter.setPen(color);
    painter.drawText(place, flags, words);
}

void box(QPainter& painter, const QRect& place, const QColor& color, int radius = 0) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(place, radius, radius);
}

/// The bar with the menu's words; returns the rest of the window.
QRect menuBar(QPainter& painter, const QRect& area, const QStringList& words) {
    const QRect bar(area.left(), area.top(), area.width(), 26);
    box(painter, bar, QColor(0xe8e8e7));
    box(painter, QRect(bar.left(), bar.bottom(), bar.width(), 1), QColor(0xcfcfcd));
    int x = bar.left() + 10;
    for (const QString& word : words) {
        text(painter, QRect(x, bar.top(), 120, bar.height()), word, QColor(0x3c3c3c), font(12));
        x += QFontMetrics(font(12)).horizontalAdvance(word) + 16;
    }
    return area.adjusted(0, bar.height(), 0, 0);
}

void barChart(QPainter& painter, const QRect& area) {
    const int heights[] = {38, 52, 47, 66, 81, 100};
    const int step = area.width() / 6;
    int index = 0;
    for (const int height : heights) {
        const int tall = area.height() * height / 100;
        const QRect bar(area.left() + index * step + step / 6, area.bottom() - tall, step * 2 / 3, tall);
        box(painter, bar, index == 5 ? QColor(0xe2725b) : QColor(0x5b7fa6), 3);
        ++index;
    }
    box(painter, QRect(area.left(), area.bottom(), area.width(), 2), QColor(0x9aa5b1));
}

void paintSlides(QPainter& painter, const QRect& area) {
    QRect rest = menuBar(painter, area, {"File", "Edit", "View", "Insert", "Slide", "Help"});
    box(painter, rest, QColor(0xdfe1e4));

    const int sideWidth = 150;
    for (int slide = 0; slide < 4; ++slide) {
        const QRect thumbnail(rest.left() + 30, rest.top() + 16 + slide * 84, sideWidth - 42, 66);
        box(painter, thumbnail.adjusted(-3, -3, 3, 3), slide == 1 ? QColor(0x4a90d9) : QColor(0xc4c8cd), 3);
        box(painter, thumbnail, Qt::white);
        box(painter, QRect(thumbnail.left() + 8, thumbnail.top() + 9, 52, 6), QColor(0x34495e));
        for (int line = 0; line < 3; ++line)
            box(painter, QRect(thumbnail.left() + 8, thumbnail.top() + 24 + line * 10, 80 - line * 14, 3),
                QColor(0xb9c2cc));
        text(painter, QRect(rest.left() + 4, thumbnail.top(), 20, 16), QString::number(slide + 1),
             QColor(0x6b7078), font(11), Qt::AlignRight | Qt::AlignVCenter);
    }

    rest = rest.adjusted(sideWidth, 16, -16, -16);
    const int width = std::min(rest.width(), rest.height() * 16 / 9);
    QRect slide(0, 0, width, width * 9 / 16);
    slide.moveCenter(rest.center());
    box(painter, slide.adjusted(3, 3, 3, 3), QColor(0xc2c6cb));
    box(painter, slide, Qt::white);
    box(painter, QRect(slide.left(), slide.top(), 10, slide.height()), QColor(0xe2725b));
    const QRect page = slide.adjusted(width / 16, width / 22, -width / 16, -width / 22);
    text(painter, QRect(page.left(), page.top(), page.width(), width / 14), "A good year for the harbour",
         QColor(0x2c3e50), font(width / 22, QFont::Bold));
    text(painter, QRect(page.left(), page.top() + width / 13, page.width(), width / 20),
         "Visitors by quarter, in thousands", QColor(0x7a8794), font(width / 36));
    const char* points[] = {"Two new ferry lines", "Longer opening hours", "The lighthouse tour"};
    int y = page.top() + width / 6;
    for (const char* point : points) {
        box(painter, QRect(page.left(), y + width / 60, width / 80, width / 80), QColor(0xe2725b),
            width / 160);
        text(painter, QRect(page.left() + width / 40, y, page.width() / 2, width / 22), point,
             QColor(0x34495e), font(width / 38));
        y += width / 14;
    }
    barChart(painter,
             QRect(page.center().x(), page.top() + width / 6, page.width() / 2, page.height() - width / 6));
}

void paintEditor(QPainter& painter, const QRect& area) {
    const QRect rest = menuBar(painter, area, {"File", "Edit", "Search", "View", "Help"});
    box(painter, rest, Qt::white);
    const int gutter = 40;
    box(painter, QRect(rest.left(), rest.top(), gutter, rest.height()), QColor(0xf2f2f0));
    const char* lines[] = {"Minutes of the planning meeting",
                           "===============================",
                           "",
                           "Present: Ada, Bruno, Chiara, Deniz",
                           "",
                           "1. The ferry timetable",
                           "   - Bruno asks the harbour office for the summer dates",
                           "   - printed copies by the end of the month",
                           "",
                           "2. Signs along the coast path",
                           "   - twelve of forty are unreadable",
                           "   - Chiara collects two offers",
                           "",
                           "3. The open day",
                           "   - first Saturday in June, ten to six",
                           "   - Deniz looks after the guest list",
                           "",
                           "Next meeting: the 14th, same place."};
    const QFont mono = font(13, QFont::Normal, "DejaVu Sans Mono");
    int number = 0;
    for (const char* line : lines) {
        const QRect row(rest.left(), rest.top() + 8 + number * 20, rest.width(), 20);
        if (row.bottom() > rest.bottom())
            break;
        if (number == 10)
            box(painter, row.adjusted(gutter, 0, 0, 0), QColor(0xe9f1fa));
        text(painter, QRect(row.left(), row.top(), gutter - 8, 20), QString::number(number + 1),
             QColor(0xa0a0a0), mono, Qt::AlignRight | Qt::AlignVCenter);
        text(painter, row.adjusted(gutter + 10, 0, 0, 0), line,
             number < 2 ? QColor(0x8a3b12) : QColor(0x2e3436), mono);
        ++number;
    }
}

void paintChat(QPainter& painter, const QRect& area) {
    box(painter, area, QColor(0xf7f7f5));
    const QRect side(area.left(), area.top(), 150, area.height());
    box(painter, side, QColor(0x39465a));
    struct Person {
        const char* name;
        QColor color;
    };
    const Person people[] = {{"Ada", QColor(0xe2725b)},
                             {"Bruno", QColor(0x6aa56b)},
                             {"Chiara", QColor(0xc79a3a)},
                             {"Deniz", QColor(0x5b9bd5)}};
    int row = 0;
    for (const Person& person : people) {
        const QRect place(side.left(), side.top() + 12 + row * 44, side.width(), 40);
        if (row == 1)
            box(painter, place, QColor(0x4b5b74));
        box(painter, QRect(place.left() + 12, place.top() + 6, 28, 28), person.color, 14);
        text(painter, QRect(place.left() + 12, place.top() + 6, 28, 28), QString(person.name).left(1),
             Qt::white, font(14, QFont::Bold), Qt::AlignCenter);
        text(painter, place.adjusted(52, 0, 0, 0), person.name, QColor(0xeef1f5), font(13));
        ++row;
    }

    struct Message {
        const char* words;
        bool mine;
    };
    const Message messages[] = {{"Are the slides ready for ten?", false},
                                {"Nearly. The last chart is missing.", true},
                                {"I have the numbers, wait a moment", false},
                                {"You are a star", true},
                                {"Shall we have lunch after that?", false}};
    const QRect talk(side.right() + 1, area.top(), area.width() - side.width(), area.height());
    int y = talk.top() + 16;
    for (const Message& message : messages) {
        const int width = QFontMetrics(font(13)).horizontalAdvance(message.words) + 28;
        const QRect bubble(message.mine ? talk.right() - 16 - width : talk.left() + 16, y, width, 34);
        box(painter, bubble, message.mine ? QColor(0xcfe6d0) : Qt::white, 12);
        text(painter, bubble, message.words, QColor(0x2e3436), font(13), Qt::AlignCenter);
        y += 46;
    }
    const QRect entry(talk.left() + 12, talk.bottom() - 46, talk.width() - 24, 34);
    box(painter, entry.adjusted(-1, -1, 1, 1), QColor(0xd5d5d2), 9);
    box(painter, entry, Qt::white, 8);
    text(painter, entry.adjusted(12, 0, 0, 0), "Message to Bruno", QColor(0xa0a0a0), font(13));
}

const std::map<QString, Appearance> appearances = {
    {"slides", {QColor(0xe2725b), "S", paintSlides}},
    {"editor", {QColor(0x4a7ebb), "N", paintEditor}},
    {"chat", {QColor(0x4f9a6b), "C", paintChat}},
};

QIcon icon(const Appearance& appearance) {
    QIcon result;
    for (const int size : {16, 24, 32, 48}) {
        QPixmap picture(size, size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        box(painter, picture.rect(), appearance.iconColor, size / 5);
        text(painter, picture.rect(), appearance.iconLetter, Qt::white, font(size * 11 / 16, QFont::Bold),
             Qt::AlignCenter);
        painter.end();
        result.addPixmap(picture);
    }
    return result;
}

class SampleWindow : public QWidget {
public:
    explicit SampleWindow(PaintContent paint)
        : m_paint(paint) {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        m_paint(painter, rect());
    }

private:
    PaintContent m_paint;
};

std::optional<QRect> parseGeometry(const QString& geometry) {
    static const QRegularExpression pattern("^(\\d+)x(\\d+)\\+(\\d+)\\+(\\d+)$");
    const QRegularExpressionMatch match = pattern.match(geometry);
    if (!match.hasMatch())
        return std::nullopt;
    return QRect(match.captured(3).toInt(), match.captured(4).toInt(), match.captured(1).toInt(),
                 match.captured(2).toInt());
}

int refuse(const QString& reason) {
    std::fprintf(stderr, "sample-window: %s\n", qPrintable(reason));
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    QStringList arguments;
    for (int index = 0; index < argc; ++index)
        arguments += QString::fromLocal8Bit(argv[index]);

    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({{"class", "Both halves of WM_CLASS.", "name"},
                       {"title", "The window's title.", "text"},
                       {"geometry", "Size of the content and place of the frame.", "WxH+X+Y"},
                       {"kind", "What is drawn: slides, editor or chat.", "kind", "editor"},
                       {"minimized", "Start minimised."}});
    if (!parser.parse(arguments))
        return refuse(parser.errorText());
    if (parser.isSet("help"))
        parser.showHelp();
    const std::optional<QRect> geometry = parseGeometry(parser.value("geometry"));
    if (parser.value("class").isEmpty())
        return refuse("--class is missing");
    if (!geometry)
        return refuse("--geometry is not of the form WxH+X+Y");
    const auto appearance = appearances.find(parser.value("kind"));
    if (appearance == appearances.end())
        return refuse("--kind is none of slides, editor, chat");

    // Qt takes the two halves of WM_CLASS from the first argument and from the application's name,
    // and would take --geometry for itself.
    std::string windowClass = parser.value("class").toStdString();
    char* onlyArgument[] = {windowClass.data(), nullptr};
    int onlyOne = 1;
    QCoreApplication::setApplicationName(parser.value("class"));
    QApplication application(onlyOne, onlyArgument);

    SampleWindow window(appearance->second.paint);
    window.setWindowTitle(parser.value("title"));
    window.setWindowIcon(icon(appearance->second));
    window.move(geometry->topLeft());
    window.resize(geometry->size());
    if (parser.isSet("minimized"))
        window.showMinimized();
    else
        window.show();
    return QApplication::exec();
}
