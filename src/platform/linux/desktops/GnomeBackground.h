#pragma once

#include "platform/linux/desktops/DesktopBackground.h"

#include <QByteArray>
#include <QDateTime>
#include <QVariantMap>

namespace tavro {

/// What GNOME and its descendants keep in their schema of the background. The keys are the same; the
/// picture's own is given by its value.
DesktopBackground parseGnomeBackground(const QVariantMap& settings, const QString& picture);

/// The picture of a slide show that is on at a time, of the shape nearest to that size. None for what is no
/// slide show.
std::optional<std::filesystem::path> pictureOfSlideShow(const QByteArray& xml, const QDateTime& now,
                                                        QSize size);

/// The same background with a picture in the place of a slide show.
DesktopBackground withPresentPicture(DesktopBackground background, QSize size);

} // namespace tavro
