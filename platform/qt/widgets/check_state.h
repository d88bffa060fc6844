#pragma once

#include <QtCore/qnamespace.h>

#include "platform/control_state.h"

namespace quillmar {

inline Qt::CheckState checkState(ControlState state) {
  switch (state) {
    case ControlState::off:
      return Qt::Unchecked;
    case ControlState::on:
      return Qt::Checked;
    case ControlState::mixed:
      return Qt::PartiallyChecked;
  }
  return Qt::Unchecked;
}

}  // namespace quillmar
