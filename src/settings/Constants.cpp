#include "settings/Constants.h"

namespace tavro {

const char* const Constants::changelogURL = TAVRO_PRODUCT_SITE "/changelog";
const char* const Constants::versionRecordURL = "https://" TAVRO_UPDATE_HOST "/releases/version.json";

} // namespace tavro
