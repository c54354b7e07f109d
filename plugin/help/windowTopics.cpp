#include "help/windowTopics.h"

#include <QMessageBox>
#include <algorithm>
#include <array>

namespace {

struct TwindowTopic {
  const char* window;
  const char* topic;
};

constexpr auto windowTopics = std::to_array<TwindowTopic>({
    {"TEquipmentRecordPluginFrame", guideStart},
    {"TfrmEqRecEditor", "editor.html"},
    {"TfrmOptions", "options.html"},
    {"TfrmChange", "records.html#change"},
    {"TEquipRecPrint", "printing.html"},
    {"TfrmPrintPreview", "printing.html#preview"},
    {"TfrmPrintProgress", "printing.html#buttons"},
    {"TEquipRecImportOptions", "importing.html#options"},
    {"TEquipRecImport", "importing.html#columns"},
    {"TEquipRecImportDup", "importing.html#duplicates"},
    {"TImportProgress", "importing.html"},
    {"TfrmImportReport", "importing.html#report"},
    {"TcomSelectFrm", "upload.html#connection"},
    {"TfrmGreeting", "upload.html"},
    {"TfrmProgress", "upload.html"},
    {"TfrmWaiting", "upload.html#waiting"},
});

struct TmessageTopic {
  const char* caption;
  const char* text;  ///< its beginning, where several messages have the same caption
  const char* anchor;
};

/// The first line that fits counts.
constexpr auto messageTopics = std::to_array<TmessageTopic>({
    {"ER1STFILENOTFOUND", "", "ER1STFILENOTFOUND"},
    {"ER2NDFILENOTFOUND", "", "ER2NDFILENOTFOUND"},
    {"ERINVALIDRECORDS", "", "ERINVALIDRECORDS"},
    {"ERDATAOVERFLOW", "", "ERDATAOVERFLOW"},
    {"ERINVALIDINPUT", "", "ERINVALIDINPUT"},
    {"EREXCEPTION", "", "unknown"},
    {"Unknown", "", "unknown"},
    {"File Not Found Exception", "", "exceptions"},
    {"Invalid Input Exception", "", "exceptions"},
    {"Overflow Exception", "", "exceptions"},
    {"Invalid Records Exception", "", "exceptions"},
    {"General EREXCEPTION", "", "exceptions"},
    {"Unknown Exception", "", "exceptions"},
    {"Test Procedure Error", "", "testproc"},
    {"Unsaved Changes Found", "", "unsaved"},
    {"List Changed Meanwhile", "", "meanwhile"},
    {"Too Many Equipment Records", "", "limit"},
    {"Delete Records?", "", "delete"},
    {"No Data", "", "nodata"},
    {"Import Canceled", "", "canceled"},
    {"Equipment records exceeded", "", "exceeded"},
    {"Malformed Equipment Records", "", "malformed"},
    {"Device IDs Truncated", "", "truncated"},
    {"No Equipment Records To Print", "", "noprint"},
    {"No Such Pages", "", "nosuchpages"},
    {"No Landscape", "", "nolandscape"},
    {"No Printer", "", "noprinter"},
    {"Print Error", "", "printerror"},
    {"PDF Error", "", "pdferror"},
    {"No Equipment Records To Upload", "", "noupload"},
    {"Bad Initialization", "", "notopened"},
    {"Uninitialized", "", "notopened"},
    {"Bad Data Length", "", "configuration"},
    {"VCL Exception", "", "configuration"},
    {"Error", "Could not open export file", "exporterror"},
    {"Export Records?", "", "exportselected"},
    {"Error", "Could not write the export file", "exportaserror"},
    {"Error", "Could not read import file", "importerror"},
    {"Error", "The import report", "reporterror"},
    {"Error", "Invalid IP Address", "badaddress"},
    {"Error", "Could not initialize", "notopened"},
    {"Error", "No Deviced Attached", "nodevice"},
    {"Error", "Timeout Error", "timeout"},
    {"Error", "Could not establish", "nocommunication"},
    {"Error", "Operation Cancelled", "cancelled"},
    {"Error", "Invalid communications configuration", "configuration"},
    {"Error", "Unknown Exception", "configuration"},
    {"Error", "Invalid State", "configuration"},
    {"Error", "An unspecified error", "configuration"},
    {"Error", "An internal error", "configuration"},
});

}  // namespace

QString topicOfWindow(const QString& name) {
  const auto* const end = windowTopics.end();
  const auto* found = std::find_if(windowTopics.begin(), end,
                                   [&](const TwindowTopic& entry) { return name == QLatin1String(entry.window); });
  return found == end ? QString() : QString::fromLatin1(found->topic);
}

QString topicOfMessage(const QString& caption, const QString& text) {
  const auto* const end = messageTopics.end();
  const auto* found = std::find_if(messageTopics.begin(), end, [&](const TmessageTopic& entry) {
    return caption == QLatin1String(entry.caption) && text.startsWith(QLatin1String(entry.text));
  });
  return found == end ? QString() : QStringLiteral("messages.html#") + QLatin1String(found->anchor);
}

QString topicOf(const QWidget* window) {
  for (; window != nullptr; window = window->parentWidget()) {
    QString topic = topicOfWindow(window->objectName());
    const auto* box = qobject_cast<const QMessageBox*>(window);
    if (box != nullptr) topic = topicOfMessage(box->windowTitle(), box->text());
    if (!topic.isEmpty()) return topic;
  }
  return {};
}
