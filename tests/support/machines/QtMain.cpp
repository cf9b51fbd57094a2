// For test programs that show windows of their own.
#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
