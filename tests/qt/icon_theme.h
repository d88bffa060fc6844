// An icon theme of a test's own, which the toolkit uses while this lives.

#pragma once

#include <QImage>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace quillmar {

class IconTheme {
 public:
  IconTheme();
  IconTheme(const IconTheme&) = delete;
  IconTheme& operator=(const IconTheme&) = delete;
  ~IconTheme();

  /// An icon drawn for `side` device-independent pixels, at a scale of 1 or 2. They come before any
  /// of that name is asked for.
  void add(const QString& name, int side, int scale, const QImage& picture);

 private:
  QTemporaryDir folder_;
  QStringList folders_;
  QStringList pathsBefore_;
  QString nameBefore_;
};

/// A square of one colour.
QImage plainPicture(int side, const QColor& color);

/// A square whose pixels are of the two colours by turns, in each row and in each column.
QImage checkeredPicture(int side, const QColor& one, const QColor& other);

}  // namespace quillmar
