#pragma once

#include "Rig.h"

#include "platform/Images.h"

#include <cstring>
#include <fstream>

namespace tavro {

template <Rig R>
class ImagesContract : public Contract<R> {
protected:
    Images& images() { return this->machine().images(); }
};

TYPED_TEST_SUITE_P(ImagesContract);

TYPED_TEST_P(ImagesContract, APictureKeepsItsSizeAndColour) {
    const auto file = this->rig.folder() / "picture.png";
    this->rig.writePicture(file, 5, 3, 0xff204060);
    const auto image = this->images().contentsOf(file);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixelWidth, 5);
    EXPECT_EQ(image->pixelHeight, 3);
    EXPECT_EQ(image->size, (Size{5, 3}));
    ASSERT_GE(image->bytesPerRow, 5 * sizeof(std::uint32_t));
    std::uint32_t last = 0;
    std::memcpy(&last, image->pixels.get() + 2 * image->bytesPerRow + 4 * sizeof(last), sizeof(last));
    EXPECT_EQ(last, 0xff204060);
}

TYPED_TEST_P(ImagesContract, WhatIsNoPictureIsNone) {
    const std::filesystem::path folder = this->rig.folder();
    std::ofstream(folder / "text.png") << "This is not a picture.";
    std::ofstream(folder / "empty.png").flush();
    std::filesystem::create_directory(folder / "folder.png");
    for (const auto* name :
         {"missing.png", "text.png", "empty.png", "folder.png", "missing/picture.png", ""}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(this->images().contentsOf(folder / name));
    }
}

TYPED_TEST_P(ImagesContract, OnlyResourcesHaveNames) {
    for (const auto* name : {"menubar-on", "menubar-off"})
        EXPECT_EQ(this->images().named(name), NamedImage{name});
    EXPECT_EQ(this->images().named("menubar-none"), std::nullopt);
}

REGISTER_TYPED_TEST_SUITE_P(ImagesContract, APictureKeepsItsSizeAndColour, WhatIsNoPictureIsNone,
                            OnlyResourcesHaveNames);

} // namespace tavro
