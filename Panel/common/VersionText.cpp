#include "Panel/common/VersionText.h"

#include "Commit.h"
#include "Version.h"

std::string VersionText() {
    const std::string commit = PROJECT_COMMIT;
    return PROJECT_VERSION_TEXT + (commit.empty() ? "" : " (" + commit + ")");
}
