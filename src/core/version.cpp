#include "rvpcv.h"

namespace {
const RvpLibraryVersion kVersion = {
    8, 2, 3, 48108, {'l', '9', '\0', '\0'}, "rvpCV AVX2 (l9)", "8.2.3 (r48108)", "Jul 23 2015"};
}  // namespace

const RvpLibraryVersion* rvpcvGetLibVersion(void) { return &kVersion; }
