#include "AudioHardwareContract.h"
#include "HotKeyCenterContract.h"
#include "ImagesContract.h"
#include "MainQueueContract.h"
#include "NotificationSilencingContract.h"
#include "ScreensContract.h"
#include "SimulatedRig.h"
#include "StatusBarContract.h"
#include "UserDefaultsContract.h"
#include "WindowServerContract.h"
#include "WorkspaceContract.h"

namespace tavro {

INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, AudioHardwareContract, SimulatedRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, HotKeyCenterContract, SimulatedRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, ImagesContract, SimulatedRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, MainQueueContract, SimulatedRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, NotificationSilencingContract, SimulatedRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, ScreensContract, SimulatedRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, StatusBarContract, SimulatedRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, UserDefaultsContract, SimulatedRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, WindowServerContract, SimulatedRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, WorkspaceContract, SimulatedRig);

} // namespace tavro
