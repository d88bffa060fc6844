// The program that the first panel is compared with: a minimal Qt window with the same contents, in
// the middle of the screen.

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);

  QWidget window;
  auto* column = new QVBoxLayout(&window);
  for (const auto& text : {QStringLiteral("Ask"), QStringLiteral("What is to be said?")}) {
    auto* label = new QLabel(text);
    label->setAlignment(Qt::AlignCenter);
    column->addWidget(label);
  }
  auto* field = new QLineEdit;
  column->addWidget(field);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(new QPushButton(QStringLiteral("Cancel")));
  auto* run = new QPushButton(QStringLiteral("Run"));
  run->setDefault(true);
  buttons->addWidget(run);
  column->addLayout(buttons);

  window.resize(420, 140);
  window.move(QGuiApplication::primaryScreen()->geometry().center() - window.rect().center());
  window.show();
  field->setFocus();
  return QApplication::exec();
}
