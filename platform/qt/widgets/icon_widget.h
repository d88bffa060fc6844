// An icon from the icon themes, scaled to fit.

#pragma once

#include <QIcon>
#include <QWidget>
#include <optional>

#include "platform/image.h"

namespace quillmar {

class IconWidget final : public QWidget {
 public:
  explicit IconWidget(QWidget* parent) : QWidget(parent) {}

  void setImage(const std::optional<Image>& image);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QIcon icon_;
  bool isTemplate_ = false;
};

}  // namespace quillmar
