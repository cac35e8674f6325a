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
  QStringList Texts() {
    return {Find("txtInputDir")->property("text").toString(),
            Find("txtOutputDir")->property("text").toString()};
  }
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
    QStringList texts;
    for (auto name : {"Label1", "cmdBrowseIn", "Label2", "cmdBrowseOut", "cmdOK", "cmdCancel"}) {
      texts << Find(name)->property("text").toString();
    }
    QCOMPARE(texts, QStringList({"Input Directory", "Browse", "Output Directory", "Browse", "OK",
                                 "Cancel"}));
  }

  void onlyOkStoresTheTextsAsTyped_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QStringList>("stored");
    QTest::newRow("OK, both empty") << "cmdOK"
                                    << ""
                                    << "" << QStringList{"", ""};
    QTest::newRow("OK, kept as typed")
        << "cmdOK"
        << "C:\\Games\\logs\\"
        << " /no/such dir " << QStringList{"C:\\Games\\logs\\", " /no/such dir "};
    QTest::newRow("Cancel") << "cmdCancel"
                            << "a"
                            << "b" << QStringList{"in", "out"};
    QTest::newRow("close box") << ""
                               << "a"
                               << "b" << QStringList{"in", "out"};
  }
  void onlyOkStoresTheTextsAsTyped() {
    QFETCH(QString, button);
    QFETCH(QString, input);
    QFETCH(QString, output);
    QFETCH(QStringList, stored);
    QCOMPARE(Texts(), QStringList({"in", "out"}));
    Type(input, output);
    button.isEmpty() ? void(dialog_->close()) : dialog_->findChild<QPushButton*>(button)->click();
    QVERIFY(!dialog_->isVisible());
    QCOMPARE(Stored(), stored);
    const QPointer<QDialog> closed = dialog_;
    Show();  // a new dialog reads the store afresh
    QVERIFY(closed.isNull());
    QCOMPARE(Texts(), stored);
  }

  void browseReplacesTheTextOnlyWhenAFolderIsChosen_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QStringList>("texts");
    const QString tmp = QDir::tempPath();
    QTest::newRow("input chosen") << "cmdBrowseIn"
                                  << "logs dir" << QStringList{"logs dir", tmp};
    QTest::newRow("input cancelled") << "cmdBrowseIn"
                                     << "" << QStringList{tmp, tmp};
    QTest::newRow("output chosen") << "cmdBrowseOut"
                                   << "reports" << QStringList{tmp, "reports"};
    QTest::newRow("output cancelled") << "cmdBrowseOut"
                                      << "" << QStringList{tmp, tmp};
  }
  void browseReplacesTheTextOnlyWhenAFolderIsChosen() {
    QFETCH(QString, button);
    QFETCH(QString, answer);
    QFETCH(QStringList, texts);
    const QDir dir(desktop_->dir.path());  // a chosen folder comes as a full path
    if (!answer.isEmpty() && dir.mkdir(answer)) desktop_->answers << dir.filePath(answer);
    Type(QDir::tempPath(), QDir::tempPath());
    dialog_->findChild<QPushButton*>(button)->click();
    QCOMPARE(desktop_->dialogs, QStringList{"Select A Directory | " + QDir::tempPath() +
                                            " | All Files (*) | folders"});
    for (QString& text : texts) text = text == QDir::tempPath() ? text : dir.filePath(text);
    QCOMPARE(Texts(), texts);
  }

  void tabRunsThroughTheBoxesThenTheButtons() {
    Find("txtInputDir")->setFocus();
    QStringList order;
    for (int i = 0; i < 6; ++i) {
      QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
      order << dialog_->focusWidget()->objectName();
    }
    QCOMPARE(order, QStringList({"txtOutputDir", "cmdBrowseIn", "cmdBrowseOut", "cmdOK",
                                 "cmdCancel", "txtInputDir"}));
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
