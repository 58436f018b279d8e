// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "ui/Manual.h"
#include "ui/Windows.h"

#include <QDirIterator>
#include <QListWidget>
#include <QRegularExpression>
#include <QTextBrowser>

namespace {

const QDir sources(QStringLiteral(TORDILLO_SOURCES));
const QDir manual(sources.filePath(u"docs/manual"_qs));

QString Read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList Captured(const QString &text, const QString &pattern)
{
    QStringList found;
    for (auto match = QRegularExpression(pattern).globalMatch(text); match.hasNext();)
        found << match.next().captured(1);
    return found;
}

// All that a window can say, as the operator reads it.
QString TextsOfTheProgram()
{
    QString texts;
    QDirIterator files(
        sources.filePath(u"src"_qs), {u"*.ui"_qs, u"*.cpp"_qs, u"*.h"_qs}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        texts += Read(files.next());
    return texts.replace(u"&amp;"_qs, u"&"_qs).remove(QRegularExpression(u"&(?=\\w)|(?<=&)&"_qs));
}

} // namespace

class TestManual : public DeskTest {
    Q_OBJECT

    static Manual *Book()
    {
        for (QWidget *window : QApplication::topLevelWidgets())
            if (auto *book = qobject_cast<Manual *>(window); book && book->isVisible())
                return book;
        return nullptr;
    }
    static QString Page() { return Book()->findChild<QTextBrowser *>(u"pagina"_qs)->source().fileName(); }
    static QStringList Chapters()
    {
        QStringList shown;
        const auto *list = Book()->findChild<QListWidget *>(u"capitulos"_qs);
        for (int row = 0; row < list->count(); ++row)
            if (!list->isRowHidden(row))
                shown << list->item(row)->text();
        return shown;
    }

private Q_SLOTS:
    void WhatItPointsToIsThere()
    {
        const QStringList listed =
            Captured(Read(manual.filePath(u"README.md"_qs)), u"\\d+\\. \\[[^]]+\\]\\((.+?)\\)"_qs);
        QVERIFY(listed.size() >= 12);
        const QStringList files = manual.entryList({u"*.md"_qs});
        QCOMPARE(QSet(files.begin(), files.end()), QSet(listed.begin(), listed.end()) + QSet{u"README.md"_qs});
        for (const QString &file : files)
            for (const QString &target : Captured(Read(manual.filePath(file)), u"\\]\\(([^)]+)\\)"_qs))
                QVERIFY2(manual.exists(target), qPrintable(file + u": " + target));
        for (int number = 1; number <= 33; ++number)
            QVERIFY(files.contains(Manual::ChapterAbout(u"Form"_qs + QString::number(number))));
    }

    // A caption that was changed on the screen and not in the manual.
    void CaptionsAreThoseOfTheProgram()
    {
        const QString program = TextsOfTheProgram();
        QStringList missing;
        for (const QString &file : manual.entryList({u"*.md"_qs}))
            for (QString caption : Captured(Read(manual.filePath(file)), u"\\*\\*([^*]+)\\*\\*"_qs)) {
                caption.replace(u'\n', u' '); // where the text wraps
                const QRegularExpression shown(u"[\">] ?"_qs + QRegularExpression::escape(caption));
                if (caption != u"en negrita" && !program.contains(shown))
                    missing << file + u": " + caption;
            }
        QCOMPARE(missing, QStringList());
    }

    void OpensBesideTheWindowThatAsks()
    {
        Begin(1);
        Press(Qt::Key_F1); // the recorded CQ
        QVERIFY(!Book());
        Menu("manual");
        QVERIFY(Book());
        QVERIFY(!Book()->isModal());
        QCOMPARE(Page(), u"README.md"_qs);
        Type("lu1abc"); // the main window goes on
        QCOMPARE(Text("Corresponsal"), u"LU1ABC"_qs);
        Book()->close();
        QVERIFY(!Book());
        InWindow("iadif", [&] {
            Press(Qt::Key_F1);
            QVERIFY(Book());
            QCOMPARE(Page(), u"adif.md"_qs);
            QVERIFY(Book()->findChild<QListWidget *>(u"capitulos"_qs)->currentItem()->text().endsWith(u"ADIF"));
            QTest::keyClick(Book(), Qt::Key_Escape);
            QVERIFY(!Book());
            QVERIFY(form->isVisible());
        });
        Menu("manual");
        QCOMPARE(Page(), u"README.md"_qs);
    }

    void AWordIsFoundWithoutItsAccents()
    {
        Begin();
        Menu("manual");
        const QStringList all = Chapters();
        auto *word = Book()->findChild<QLineEdit *>(u"palabra"_qs);
        word->setText(u"DUPLICADO"_qs);
        QVERIFY(Chapters().size() < all.size());
        QVERIFY(Chapters().filter(u"Concursos"_qs).size() == 1);
        word->setText(u"lapiz de cejas"_qs);
        QCOMPARE(Chapters(), QStringList());
        word->setText(u"flecha abajo"_qs);
        const auto *page = Book()->findChild<QTextBrowser *>(u"pagina"_qs);
        QVERIFY(!page->extraSelections().isEmpty());
        word->setText(u"satelites ..."_qs);
        QCOMPARE(Page(), u"satelites.md"_qs);
        QCOMPARE(page->textCursor().selectedText(), u"Satélites ..."_qs);
        word->clear();
        QCOMPARE(Chapters(), all);
        QVERIFY(page->extraSelections().isEmpty());
    }

    void AMissingManualIsTold()
    {
        Begin();
        const QString nowhere = Path("manual");
        Manual none(nowhere, dialogs);
        none.ShowFor(Main());
        QVERIFY(!none.isVisible());
        QCOMPARE(Said(), QString(u"!No se encuentra el manual en la carpeta\n" + nowhere));
    }
};

TORDILLO_TEST(TestManual)
#include "TestManual.moc"
