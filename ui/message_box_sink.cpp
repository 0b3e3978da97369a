#include "ui/message_box_sink.h"

#include <QApplication>
#include <QMessageBox>
#include <array>
#include <utility>

#include "editors/common/text_codec.h"
#include "ui/qt_services.h"
#include "ui/view_helpers.h"

namespace orvane {

bool platformShowsWindows(std::string_view platformName) {
  constexpr std::array<std::string_view, 3> kHeadless = {"offscreen", "minimal", "minimalegl"};
  for (std::string_view headless : kHeadless)
    if (platformName == headless) return false;
  return !platformName.empty();
}

bool canShowMessageBoxes() {
  return haveWidgetApplication() && platformShowsWindows(QGuiApplication::platformName().toStdString());
}

MessageSink useMessageBoxes() {
  MessageSink previous = setMessageSink({});
  MessageSink fallback = previous;
  setMessageSink([fallback = std::move(fallback)](std::string_view text) {
    if (!canShowMessageBoxes()) return fallback(text);
    // The model's messages are narrow texts in the host's code page.
    QMessageBox box(QMessageBox::Warning, toQString(kMessageBoxTitle), toQString(fromAnsi(text)), QMessageBox::Ok,
                    QApplication::activeModalWidget());
    box.exec();
  });
  return previous;
}

}  // namespace orvane
