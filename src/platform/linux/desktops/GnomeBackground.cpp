#include "platform/linux/desktops/GnomeBackground.h"

#include "platform/linux/desktops/SettingsText.h"

#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace tavro {

namespace {

using Scaling = BackgroundStyle::Scaling;
using Shading = BackgroundStyle::Shading;

/// A picture that stays, or that goes over into the next slide's.
struct Slide {
    double seconds = 0;
    bool isTransition = false;
    QString file;
};

/// A file, or one for each of several sizes.
QString readFile(QXmlStreamReader& xml, QSize size) {
    const auto shapeOf = [](double width, double height) { return height > 0 ? width / height : 0; };
    const auto wanted = shapeOf(size.width(), size.height());
    QString file;
    auto least = std::numeric_limits<double>::infinity();
    while (!xml.atEnd() && xml.readNext() != QXmlStreamReader::EndElement) {
        if (xml.isCharacters() && file.isEmpty())
            file = xml.text().toString().trimmed();
        if (!xml.isStartElement())
            continue;
        const auto attributes = xml.attributes();
        const auto difference = std::abs(
            wanted - shapeOf(attributes.value("width").toDouble(), attributes.value("height").toDouble()));
        const auto ofSize = xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
        if (difference < least) {
            least = difference;
            file = ofSize;
        }
    }
    return file;
}

Slide readSlide(QXmlStreamReader& xml, QSize size) {
    Slide slide{0, xml.name() == QLatin1String("transition"), {}};
    while (xml.readNextStartElement())
        if (xml.name() == QLatin1String("duration"))
            slide.seconds = std::max(xml.readElementText().toDouble(), 0.0);
        else if (xml.name() == QLatin1String("file") || xml.name() == QLatin1String("from"))
            slide.file = readFile(xml, size);
        else
            xml.skipCurrentElement();
    return slide;
}

QDateTime readTime(QXmlStreamReader& xml) {
    std::map<QString, int> parts;
    while (xml.readNextStartElement()) {
        const auto name = xml.name().toString();
        parts[name] = xml.readElementText().toInt();
    }
    return {QDate(parts["year"], parts["month"], parts["day"]),
            QTime(parts["hour"], parts["minute"], parts["second"])};
}

/// The slide that is on so long after the first one began; they go round. A transition is half over when the
/// next one counts.
const Slide& slideAt(const std::vector<Slide>& slides, double seconds) {
    double round = 0;
    for (const auto& slide : slides)
        round += slide.seconds;
    auto left = round > 0 ? std::fmod(seconds, round) : 0;
    left += left < 0 ? round : 0;
    for (std::size_t i = 0; i < slides.size(); ++i) {
        const auto& slide = slides[i];
        if (left < slide.seconds)
            return slide.isTransition && left >= slide.seconds / 2 ? slides[(i + 1) % slides.size()] : slide;
        left -= slide.seconds;
    }
    return slides.back();
}

} // namespace

DesktopBackground parseGnomeBackground(const QVariantMap& settings, const QString& picture) {
    const auto option = settings["picture-options"].toString();
    DesktopBackground background{option == "none" ? std::nullopt : localFile(picture), {}};
    background.spansScreens = option == "spanned";
    background.style = {
        valueNamed<Scaling>(option,
                            {{"wallpaper", Scaling::tiled},
                             {"centered", Scaling::centered},
                             {"scaled", Scaling::fitted},
                             {"stretched", Scaling::stretched},
                             {"spanned", Scaling::stretched}},
                            Scaling::zoomed),
        valueNamed<Shading>(settings["color-shading-type"].toString(),
                            {{"horizontal", Shading::horizontal}, {"vertical", Shading::vertical}},
                            Shading::solid),
        BackgroundStyle::Scaler::toolkit,
        {parseColor(settings["primary-color"].toString()),
         parseColor(settings["secondary-color"].toString())}};
    return background;
}

std::optional<std::filesystem::path> pictureOfSlideShow(const QByteArray& text, const QDateTime& now,
                                                        QSize size) {
    QXmlStreamReader xml(text);
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("background"))
        return std::nullopt;
    QDateTime start;
    std::vector<Slide> slides;
    while (xml.readNextStartElement())
        if (xml.name() == QLatin1String("starttime"))
            start = readTime(xml);
        else
            slides.push_back(readSlide(xml, size));
    if (slides.empty())
        return std::nullopt;
    constexpr double milliseconds = 1000;
    const auto past = start.isValid() ? static_cast<double>(start.msecsTo(now)) / milliseconds : 0;
    return localFile(slideAt(slides, past).file);
}

DesktopBackground withPresentPicture(DesktopBackground background, QSize size) {
    if (!background.picture || background.picture->extension() != ".xml")
        return background;
    background.picture = pictureOfSlideShow(beginOfFile(QString::fromStdString(background.picture->string())),
                                            QDateTime::currentDateTime(), size);
    return background;
}

} // namespace tavro
