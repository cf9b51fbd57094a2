#pragma once

#include "picture/PictureHeader.h"
#include "platform/storage/Image.h"

#include <QByteArray>

#include <optional>

namespace tavro {

/// What tavropro-picture writes, which a hostile file may have taken over. Nothing of it is believed before
/// it has been compared with the bounds, and more than it announces is not kept.
class PictureAnswer {
public:
    /// Takes the next bytes; false when they cannot become a picture any more.
    bool append(const QByteArray& bytes);
    /// The picture, when it is whole.
    std::optional<Image> image() const;
    bool isConfined() const { return header().isConfined != 0; }

private:
    /// Zeros until it is there.
    PictureHeader header() const;

    QByteArray m_bytes;
};

} // namespace tavro
