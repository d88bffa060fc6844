#include "tests/conformance/settings_window_conformance.h"
#include "tests/conformance/widgets_alert_conformance.h"
#include "tests/conformance/widgets_choices_conformance.h"
#include "tests/conformance/widgets_closing_conformance.h"
#include "tests/conformance/widgets_completions_conformance.h"
#include "tests/conformance/widgets_controls_conformance.h"
#include "tests/conformance/widgets_custom_view_conformance.h"
#include "tests/conformance/widgets_drops_conformance.h"
#include "tests/conformance/widgets_keyboard_conformance.h"
#include "tests/conformance/widgets_outline_conformance.h"
#include "tests/conformance/widgets_panels_conformance.h"
#include "tests/conformance/widgets_tabs_conformance.h"
#include "tests/conformance/widgets_text_view_conformance.h"
#include "tests/conformance/widgets_waiting_conformance.h"
#include "tests/qt/qt_user.h"

namespace quillmar {

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, AlertConformance, QtUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, CompletionsConformance, QtUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, DropsConformance, QtUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, PanelsConformance, QtUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, WaitingConformance, QtUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, SettingsWindowConformance, QtUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, WidgetChoicesConformance, QtUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, WidgetControlsConformance, QtUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, WidgetKeyboardConformance, QtUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, OutlineConformance, QtUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, TabViewConformance, QtUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, TextViewConformance, QtUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, WidgetClosingConformance, QtUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, CustomViewConformance, QtUser);

}  // namespace quillmar
