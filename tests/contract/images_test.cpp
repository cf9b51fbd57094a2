#include "support/machines/TestMachine.h"

#include "platform/storage/Images.h"

#include <cstring>
#include <fstream>

namespace tavro {
namespace {

class ImagesContract : public Contract {
protected:
    Images& images() { return machine().images(); }
};

TEST_F(ImagesContract, APictureKeepsItsSizeAndColour) {
    const auto file = testMachine->folder() / "picture.png";
    testMachine->writePicture(file, 5, 3, 0xff204060);
    const auto image = images().contentsOf(file);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixelWidth, 5);
    EXPECT_EQ(image->pixelHeight, 3);
    EXPECT_EQ(image->size, (Size{5, 3}));
    ASSERT_GE(image->bytesPerRow, 5 * sizeof(std::uint32_t));
    std::uint32_t last = 0;
    std::memcpy(&last, image->pixels.get() + 2 * image->bytesPerRow + 4 * sizeof(last), sizeof(last));
    EXPECT_EQ(last, 0xff204060);
}

TEST_F(ImagesContract, WhatIsNoPictureIsNone) {
    const std::filesystem::path folder = testMachine->folder();
    std::ofstream(folder / "text.png") << "This is not a picture.";
    std::ofstream(folder / "empty.png").flush();
    std::filesystem::create_directory(folder / "folder.png");
    for (const auto* name :
         {"missing.png", "text.png", "empty.png", "folder.png", "missing/picture.png", ""}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(images().contentsOf(folder / name));
    }
}

TEST_F(ImagesContract, OnlyResourcesHaveNames) {
    for (const auto* name : {"menubar-on", "menubar-off"})
        EXPECT_EQ(images().named(name), NamedImage{name});
    EXPECT_EQ(images().named("menubar-none"), std::nullopt);
}

} // namespace
} // namespace tavro
