#include "AudioHardwareContract.h"
#include "HotKeyCenterContract.h"
#include "ImagesContract.h"
#include "LinuxRig.h"
#include "MainQueueContract.h"
#include "NotificationSilencingContract.h"
#include "ScreensContract.h"
#include "StatusBarContract.h"
#include "UserDefaultsContract.h"
#include "WindowServerContract.h"
#include "WorkspaceContract.h"

#include <QApplication>

namespace tavro {

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, AudioHardwareContract, LinuxRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, HotKeyCenterContract, LinuxRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, ImagesContract, LinuxRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, MainQueueContract, LinuxRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, NotificationSilencingContract, LinuxRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, ScreensContract, LinuxRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, StatusBarContract, LinuxRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, UserDefaultsContract, LinuxRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, WindowServerContract, LinuxRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, WorkspaceContract, LinuxRig);

} // namespace tavro

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
