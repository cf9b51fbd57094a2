#pragma once

#include <QLabel>

namespace tavro {

struct Image;

/// A picture stretched to the preview's size, within a black border.
class WallpaperPreview final : public QLabel {
public:
    explicit WallpaperPreview(QWidget* parent);

    /// With null, nothing but the border.
    void setImage(const Image* image);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tavro
