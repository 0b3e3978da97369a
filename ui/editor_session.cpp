#include "ui/editor_session.h"

#include <QApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QTranslator>
#include <cstdio>

#include "ui/message_box_sink.h"
#include "ui/qt_services.h"

namespace orvane {
namespace {

// Whether a local X display such as ":0" has its socket, so Qt will not abort trying to reach it.
bool localX11DisplayExists(const QByteArray& display) {
  if (!display.startsWith(':')) return true;  // a remote display: only connecting would tell
  const QByteArray number = display.mid(1).split('.').value(0);
  return QFileInfo::exists(QStringLiteral("/tmp/.X11-unix/X") + QString::fromLatin1(number));
}

// Why no QApplication can be made here, or an empty text when one can. Qt itself ends the process
// when its platform cannot reach a display, so this is decided before creating one.
QString whyNoDisplay() {
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  const QByteArray x11 = qgetenv("DISPLAY");
  const QByteArray wayland = qgetenv("WAYLAND_DISPLAY");
  if (!platform.isEmpty() && !platform.startsWith("xcb") && !platform.startsWith("wayland"))
    return {};  // offscreen, vnc, eglfs...: the host chose a platform that needs no display server
  if (platform.startsWith("wayland")) return wayland.isEmpty() ? QStringLiteral("WAYLAND_DISPLAY is not set") : QString();
  if (!wayland.isEmpty() && platform.isEmpty()) return {};
  if (x11.isEmpty()) return QStringLiteral("DISPLAY is not set");
  if (!localX11DisplayExists(x11)) return QStringLiteral("the X display %1 is not running").arg(QString::fromLocal8Bit(x11));
  return {};
}

// The application the editors run in, or null (with the reason in `why`) when there can be none.
QApplication* editorApplication(QString& why) {
  if (QCoreApplication* existing = QCoreApplication::instance()) {
    if (!haveWidgetApplication()) why = QStringLiteral("the host's application object cannot show widgets on this thread");
    return qobject_cast<QApplication*>(existing);
  }
  why = whyNoDisplay();
  if (!why.isEmpty()) return nullptr;
  // Qt allows one application object per process: it is made once and kept for later calls.
  static int argc = 1;
  static char name[] = "orvane";
  static char* argv[] = {name, nullptr};
  static QApplication* application = new QApplication(argc, argv);
  return application;
}

// Puts back the message sink of before the session, however the session ends.
class MessageSinkScope {
 public:
  MessageSinkScope() : previous_(useMessageBoxes()) {}
  ~MessageSinkScope() { setMessageSink(std::move(previous_)); }
  MessageSinkScope(const MessageSinkScope&) = delete;
  MessageSinkScope& operator=(const MessageSinkScope&) = delete;

 private:
  MessageSink previous_;
};

// Qt's own texts (Yes, No, the file dialogs) in Spanish, like the editors, for the session only: a
// host's application keeps its own language once the editor returns.
class SpanishQtScope {
 public:
  SpanishQtScope() {
    if (translator_.load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
      installed_ = QCoreApplication::installTranslator(&translator_);
  }
  ~SpanishQtScope() {
    if (installed_) QCoreApplication::removeTranslator(&translator_);
  }
  SpanishQtScope(const SpanishQtScope&) = delete;
  SpanishQtScope& operator=(const SpanishQtScope&) = delete;

 private:
  QTranslator translator_;
  bool installed_ = false;
};

}  // namespace

bool runEditorSession(const std::function<void(DialogServices&)>& work) {
  QString why;
  if (editorApplication(why) == nullptr || !why.isEmpty()) {
    std::fprintf(stderr,
                 "orvane: the editors need a display and cannot open one (%s). Nothing was changed. "
                 "Run the program in a desktop session, or under xvfb-run.\n",
                 why.toLocal8Bit().constData());
    return false;
  }
  MessageSinkScope messageBoxes;
  SpanishQtScope spanish;
  QtDialogServices services;
  work(services);
  return true;
}

}  // namespace orvane
