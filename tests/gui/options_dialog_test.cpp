// The Options dialog driven through its real controls; the folder browser
// is answered by FakeDesktop and the settings live in a private store.

#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QtTest>
#include <memory>

#include "fake_desktop.h"
#include "ui/frm_options.h"

class OptionsDialogTest : public QObject {
  Q_OBJECT

  std::unique_ptr<FakeDesktop> desktop_;
  QPointer<QDialog> dialog_;

  void Show() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // a closed one goes
    dialog_ = new vantor::frmOptions(*desktop_);
    dialog_->show();
  }
  QWidget* Find(const QString& name) { return dialog_->findChild<QWidget*>(name); }
  void Type(const QString& input, const QString& output) {
    dialog_->findChild<QLineEdit*>("txtInputDir")->setText(input);
    dialog_->findChild<QLineEdit*>("txtOutputDir")->setText(output);
  }
  QStringList TextsOf(const QStringList& names) {
    QStringList texts;
    for (const QString& name : names) texts << Find(name)->property("text").toString();
    return texts;
  }
  QStringList Texts() { return TextsOf({"txtInputDir", "txtOutputDir"}); }
  static QStringList Stored() {
    return {FakeDesktop::Store().value("Main/InputDir", "absent").toString(),
            FakeDesktop::Store().value("Main/OutputDir", "absent").toString()};
  }

 private slots:
  void init() {
    desktop_ = std::make_unique<FakeDesktop>();
    FakeDesktop::Store().setValue("Main/InputDir", "in");
    FakeDesktop::Store().setValue("Main/OutputDir", "out");
    Show();
  }
  void cleanup() {
    delete dialog_;
    desktop_.reset();
  }

  void showsTwoDirectoryRowsAboveOkAndCancel() {
    QCOMPARE(dialog_->windowTitle() + (dialog_->isModal() ? " modal" : ""), QString("Options"));
    QCOMPARE(TextsOf({"Label1", "cmdBrowseIn", "Label2", "cmdBrowseOut", "cmdOK", "cmdCancel"}),
             QStringList({"Input Directory", "Browse", "Output Directory", "Browse", "OK", "Cancel"}));
  }

  void onlyOkStoresTheTextsAsTyped_data() {
    QTest::addColumn<QStringList>("button_and_texts");  // "" for the close box
    QTest::addColumn<QStringList>("stored");
    QTest::newRow("OK, both empty") << QStringList{"cmdOK", "", ""} << QStringList{"", ""};
    QTest::newRow("OK, kept as typed") << QStringList{"cmdOK", "C:\\Games\\logs\\", " /no/such dir "}
                                       << QStringList{"C:\\Games\\logs\\", " /no/such dir "};
    QTest::newRow("Cancel") << QStringList{"cmdCancel", "a", "b"} << QStringList{"in", "out"};
    QTest::newRow("close box") << QStringList{"", "a", "b"} << QStringList{"in", "out"};
  }
  void onlyOkStoresTheTextsAsTyped() {
    QFETCH(QStringList, button_and_texts);
    QFETCH(QStringList, stored);
    QCOMPARE(Texts(), QStringList({"in", "out"}));
    Type(button_and_texts[1], button_and_texts[2]);
    if (button_and_texts[0].isEmpty())
      dialog_->close();
    else
      dialog_->findChild<QPushButton*>(button_and_texts[0])->click();
    QVERIFY(!dialog_->isVisible());
    QCOMPARE(Stored(), stored);
    const QPointer<QDialog> closed = dialog_;
    Show();  // a new dialog reads the store afresh
    QVERIFY(closed.isNull());
    QCOMPARE(Texts(), stored);
  }

  void okThatCannotSaveSaysWhereAndKeepsTheDialogOpen() {
    const QString file = desktop_->dir.filePath("Vantor Log Analyzer/Vantor Log Analyzer.conf");
    QVERIFY(QFile::remove(file) && QDir().mkdir(file));  // a folder where the file should be
    Type("a", "b");
    dialog_->findChild<QPushButton*>("cmdOK")->click();
    QCOMPARE(desktop_->messages, QStringList{"Vantor Log Analyzer | Could not save the settings to " + file +
                                             ": the file cannot be written. | 3 | OK"});
    QVERIFY(dialog_->isVisible());
    QCOMPARE(Texts(), QStringList({"a", "b"}));
  }

  void browseReplacesTheTextOnlyWhenAFolderIsChosen_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("answer_and_texts");  // "=" for a text left as it was
    QTest::newRow("input chosen") << "cmdBrowseIn" << QStringList{"logs dir", "logs dir", "="};
    QTest::newRow("input cancelled") << "cmdBrowseIn" << QStringList{"", "=", "="};
    QTest::newRow("output chosen") << "cmdBrowseOut" << QStringList{"reports", "=", "reports"};
    QTest::newRow("output cancelled") << "cmdBrowseOut" << QStringList{"", "=", "="};
  }
  void browseReplacesTheTextOnlyWhenAFolderIsChosen() {
    QFETCH(QString, button);
    QFETCH(QStringList, answer_and_texts);
    const QString answer = answer_and_texts.takeFirst(), tmp = QDir::tempPath();
    const QDir dir(desktop_->dir.path());  // a chosen folder comes as a full path
    if (!answer.isEmpty() && dir.mkdir(answer)) desktop_->answers << dir.filePath(answer);
    Type(tmp, tmp);
    dialog_->findChild<QPushButton*>(button)->click();
    QCOMPARE(desktop_->dialogs, QStringList{"Select A Directory | " + tmp + " | All Files (*) | folders"});
    for (QString& text : answer_and_texts) text = text == "=" ? tmp : dir.filePath(text);
    QCOMPARE(Texts(), answer_and_texts);
  }

  void tabRunsThroughTheBoxesThenTheButtons() {
    Find("txtInputDir")->setFocus();
    QStringList order;
    for (int i = 0; i < 6; ++i) {
      QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
      order << dialog_->focusWidget()->objectName();
    }
    QCOMPARE(order, QStringList({"txtOutputDir", "cmdBrowseIn", "cmdBrowseOut", "cmdOK", "cmdCancel",
                                 "txtInputDir"}));
  }

  void enterAndEscapeLeaveTheDialogOpen() {
    Type("a", "b");
    for (auto target : {"txtInputDir", "cmdOK", "cmdCancel"}) {
      for (Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(Find(target), key);
        QVERIFY2(dialog_->isVisible(), target);
      }
    }
    QCOMPARE(Stored(), QStringList({"in", "out"}));
  }
};

QTEST_MAIN(OptionsDialogTest)
#include "options_dialog_test.moc"
