#include "tests/conformance/widgets_conformance.h"

#include "tests/qt/qt_user.h"

namespace quillmar {

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, WidgetsConformance, QtUser);

}  // namespace quillmar
