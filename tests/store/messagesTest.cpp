#include <QTest>

#include "store/loadReport.h"
#include "tools/testList.h"

class TmessagesTest : public QObject {
  Q_OBJECT
 private slots:
  void successSaysNothing();
  void failureHasItsMessages_data();
  void failureHasItsMessages();
};
EQREC_TEST(TmessagesTest);

namespace {

constexpr const char* unidentified = "An unidentified error occurred while\nloading the equipment records";

QByteArray overflowText(const char* verb) {
  return QByteArray("More than 18432 records were found.\n\nThe analyzer can only ") + verb +
         " 18432\nEquipment Records at a time.\n\nOnly the first 18432 records were loaded.\n"
         "All other records were ignored.";
}

}  // namespace

void TmessagesTest::successSaysNothing() {
  for (const TERStatus status : {0, 10}) QVERIFY(!loadMessage(status) && !saveMessage(status));
}

void TmessagesTest::failureHasItsMessages_data() {
  QTest::addColumn<int>("code");
  QTest::addColumn<QByteArray>("caption");
  QTest::addColumn<QByteArray>("text");
  QTest::addColumn<QByteArray>("exceptionCaption");
  QTest::addColumn<QByteArray>("exceptionText");
  const auto row = [](int code, const char* caption, const QByteArray& text, const char* exceptionCaption,
                      const char* exceptionText) {
    QTest::addRow("%d, %s", code, caption)
        << code << QByteArray(caption) << text << QByteArray(exceptionCaption) << QByteArray(exceptionText);
  };
  row(1, "EREXCEPTION", unidentified, "General EREXCEPTION", unidentified);
  row(2, "ER1STFILENOTFOUND", "The equipment record data file could not be found.\nEquipment records were not loaded",
      "File Not Found Exception", "Data files not found.");
  row(3, "ER2NDFILENOTFOUND",
      "The equipment record information file could not be found.\nEquipment records were not loaded",
      "File Not Found Exception", "Data files not found.");
  row(4, "ERINVALIDINPUT", "Invalid parameters passed to TequipRecFromFile()\nEquipment records were not loaded",
      "Invalid Input Exception", "Invalid input");
  row(7, "ERDATAOVERFLOW", overflowText("accept"), "Overflow Exception", "Data record overflow");
  row(9, "ERINVALIDRECORDS",
      "One or more corrupt records were found.\nThe corrupt records were not loaded.\n\n"
      "If this error persists after restart, please\ncontact your system vendor.",
      "Invalid Records Exception", "Invalid Records Found");
  for (const int code : {5, 6, 8, 11, -1}) row(code, "Unknown", unidentified, "Unknown Exception", unidentified);
}

void TmessagesTest::failureHasItsMessages() {
  QFETCH(int, code);
  QFETCH(QByteArray, text);
  const auto status = static_cast<TERStatus>(code);
  const auto load = loadMessage(status);
  const auto save = saveMessage(status);
  QVERIFY(load && save);
  QCOMPARE(QByteArray(load->text), text);
  QCOMPARE(QByteArray(save->text), code == 7 ? overflowText("handle") : text);
  for (const TmessageText& message : {*load, *save}) {
    QTEST(QByteArray(message.caption), "caption");
    QCOMPARE(message.icon, code == 7 || code == 9 ? TmessageIcon::information : TmessageIcon::error);
  }
  QTEST(QByteArray(exceptionMessage(status).caption), "exceptionCaption");
  QTEST(QByteArray(exceptionMessage(status).text), "exceptionText");
  QCOMPARE(exceptionMessage(status).icon, TmessageIcon::error);
}

#include "messagesTest.moc"
