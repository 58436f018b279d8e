// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Manual.h"

#include "ui/WindowScaler.h"
#include "ui_Manual.h"

#include <QFile>
#include <QIcon>
#include <QImageReader>
#include <QKeyEvent>
#include <QScreen>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextTable>
#include <algorithm>
#include <cmath>

namespace {

const QString firstPage = u"README.md"_qs;

constexpr int pageMargin = 18;

// A letter stands for itself with any accent.
QRegularExpression PatternOf(const QString &word)
{
    static const QStringList alike{u"aá"_qs, u"eé"_qs, u"ií"_qs, u"oó"_qs, u"uúü"_qs, u"nñ"_qs};
    QString pattern;
    for (const QChar c : word) {
        const auto letters = std::find_if(
            alike.cbegin(), alike.cend(), [c](const QString &group) { return group.contains(c, Qt::CaseInsensitive); });
        pattern += letters == alike.cend() ? QRegularExpression::escape(QString(c)) : QString(u'[' + *letters + u']');
    }
    return QRegularExpression(
        pattern, QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
}

QString TextOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

struct Piece {
    QTextCursor whole;
    QTextCharFormat format;
};

// Taken out before any of them is changed: a change joins and splits what it touches.
std::vector<Piece> PiecesOf(QTextDocument *document)
{
    std::vector<Piece> pieces;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next())
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            const QTextFragment fragment = at.fragment();
            QTextCursor whole(document);
            whole.setPosition(fragment.position());
            whole.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            pieces.push_back({whole, fragment.charFormat()});
        }
    return pieces;
}

} // namespace

Manual::Manual(const QString &folder, Dialogs &dialogs)
    : Window(u"Manual"_qs, dialogs)
    , folder_(folder)
    , ui_(std::make_unique<Ui::Manual>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Manual de Tordillo Compact"_qs);
    setWindowIcon(QIcon(u":/icons/tordillo.svg"_qs));
    ui_->pagina->document()->setDocumentMargin(pageMargin);
    ReadChapters();
    connect(ui_->capitulos, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0)
            Open(chapters_[size_t(row)].file);
    });
    connect(ui_->pagina, &QTextBrowser::sourceChanged, this,
        [this](const QUrl &page) { ChapterShown(page.fileName()); }); // source() is still the last one then
    connect(ui_->palabra, &QLineEdit::textChanged, this, &Manual::Look);
    resize(1180, 680);
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Manual::~Manual() = default;

void Manual::ReadChapters()
{
    const QString index = TextOf(folder_ + u'/' + firstPage);
    if (index.isEmpty())
        return;
    chapters_.push_back({firstPage, index});
    ui_->capitulos->addItem(u"Inicio"_qs);
    static const QRegularExpression entry(
        uR"(^(\d+)\. \[([^\]]+)\]\(([^)]+\.md)\))"_qs, QRegularExpression::MultilineOption);
    for (auto found = entry.globalMatch(index); found.hasNext();) {
        const auto match = found.next();
        chapters_.push_back({match.captured(3), TextOf(folder_ + u'/' + match.captured(3))});
        ui_->capitulos->addItem(match.captured(1) + u".  " + match.captured(2));
    }
}

QString Manual::ChapterAbout(const QString &window)
{
    static const QHash<QString, QString> chapters{{u"Form2"_qs, u"primer-arranque.md"_qs},
        {u"Form3"_qs, u"log-diario.md"_qs}, {u"Form4"_qs, u"concursos.md"_qs}, {u"Form5"_qs, u"log-diario.md"_qs},
        {u"Form6"_qs, u"buscar.md"_qs}, {u"Form7"_qs, u"concursos.md"_qs}, {u"Form8"_qs, u"concursos.md"_qs},
        {u"Form9"_qs, u"concursos.md"_qs}, {u"Form11"_qs, u"satelites.md"_qs}, {u"Form12"_qs, u"adif.md"_qs},
        {u"Form13"_qs, u"concursos.md"_qs}, {u"Form14"_qs, u"provincias.md"_qs}, {u"Form15"_qs, u"copias.md"_qs},
        {u"Form17"_qs, u"log-diario.md"_qs}, {u"Form20"_qs, u"concursos.md"_qs}, {u"Form21"_qs, u"adif.md"_qs},
        {u"Form22"_qs, u"manipulador.md"_qs}, {u"Form33"_qs, u"lda-eqsl.md"_qs},
        {u"KeyerTest"_qs, u"manipulador.md"_qs}};
    return chapters.value(window, firstPage);
}

void Manual::ShowFor(QWidget &asking)
{
    if (chapters_.empty()) {
        dialogs().Message(&asking, u"No se encuentra el manual en la carpeta\n"_qs + folder_);
        return;
    }
    // A modal window lets only those be used that belong to it.
    QWidget *owner = asking.isModal() ? &asking : nullptr;
    if (parentWidget() != owner)
        setParent(owner, Qt::Window);
    Open(ChapterAbout(asking.objectName()));
    if (isMinimized())
        showNormal();
    show();
    raise();
    activateWindow();
    ui_->pagina->setFocus();
}

void Manual::Open(const QString &file)
{
    const QUrl page = QUrl::fromLocalFile(folder_ + u'/' + file);
    if (ui_->pagina->source() != page)
        ui_->pagina->setSource(page);
}

// By a link, the list or the way back.
void Manual::ChapterShown(const QString &file)
{
    const auto chapter =
        std::find_if(chapters_.cbegin(), chapters_.cend(), [&file](const Chapter &one) { return one.file == file; });
    const QSignalBlocker quiet(ui_->capitulos);
    ui_->capitulos->setCurrentRow(chapter == chapters_.cend() ? -1 : int(chapter - chapters_.cbegin()));
    Dress();
    MarkWord();
}

// Markdown says what things are; how they look is said here.
void Manual::Dress()
{
    QTextDocument *document = ui_->pagina->document();
    const QBrush ground = palette().brush(QPalette::AlternateBase);
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format;
        if (block.blockFormat().headingLevel() > 0) {
            format.setTopMargin(block.blockFormat().headingLevel() == 1 ? 0 : 18);
            format.setBottomMargin(8);
        }
        if (block.blockFormat().intProperty(QTextFormat::BlockQuoteLevel) > 0
            || block.blockFormat().hasProperty(QTextFormat::BlockCodeFence) || block.blockFormat().nonBreakableLines())
            format.setBackground(ground);
        QTextCursor(block).mergeBlockFormat(format);
    }
    QTextCharFormat key;
    key.setBackground(ground);
    for (Piece &piece : PiecesOf(document))
        if (piece.format.fontFixedPitch())
            piece.whole.mergeCharFormat(key);
    DressTables();
    FitPictures();
    ui_->pagina->moveCursor(QTextCursor::Start);
}

void Manual::DressTables()
{
    for (QTextFrame *frame : ui_->pagina->document()->rootFrame()->childFrames()) {
        auto *table = qobject_cast<QTextTable *>(frame);
        if (!table)
            continue;
        QTextTableFormat format = table->format();
        format.setBorder(1);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderBrush(palette().brush(QPalette::Mid));
        format.setBorderCollapse(true);
        format.setCellPadding(5);
        format.setCellSpacing(0);
        format.setTopMargin(6);
        format.setBottomMargin(10);
        table->setFormat(format);
        for (int column = 0; column < table->columns(); ++column) {
            QTextTableCell cell = table->cellAt(0, column);
            QTextCharFormat head = cell.format();
            head.setBackground(palette().brush(QPalette::AlternateBase));
            cell.setFormat(head);
        }
    }
}

// No wider than the page. They are scaled here, since Qt's layout scales them without smoothing.
void Manual::FitPictures()
{
    QTextDocument *document = ui_->pagina->document();
    const double room = ui_->pagina->viewport()->width() - 2 * pageMargin;
    for (Piece &piece : PiecesOf(document)) {
        if (!piece.format.isImageFormat())
            continue;
        QTextImageFormat picture = piece.format.toImageFormat();
        QImageReader reader(folder_ + u'/' + picture.name());
        const QSizeF drawn = reader.size();
        const double width = std::floor(std::min(drawn.width() * ScaleOf(this), room));
        if (width < 1 || width == picture.width())
            continue;
        reader.setScaledSize((drawn * (width / drawn.width()) * devicePixelRatioF()).toSize());
        QImage image = reader.read();
        image.setDevicePixelRatio(devicePixelRatioF());
        document->addResource(QTextDocument::ImageResource, document->baseUrl().resolved(QUrl(picture.name())), image);
        picture.setWidth(width);
        piece.whole.setCharFormat(picture);
    }
}

void Manual::Look(const QString &word)
{
    wanted_ = word.trimmed().isEmpty() ? QRegularExpression() : PatternOf(word.trimmed());
    int first = -1;
    for (int row = int(chapters_.size()) - 1; row >= 0; --row) {
        const bool holds = chapters_[size_t(row)].text.contains(wanted_);
        ui_->capitulos->setRowHidden(row, !holds);
        if (holds)
            first = row;
    }
    const int shown = ui_->capitulos->currentRow();
    if (first >= 0 && (shown < 0 || ui_->capitulos->isRowHidden(shown)))
        ui_->capitulos->setCurrentRow(first);
    else
        MarkWord();
}

void Manual::MarkWord()
{
    QList<QTextEdit::ExtraSelection> marks;
    if (!wanted_.pattern().isEmpty()) {
        QTextEdit::ExtraSelection mark;
        mark.format.setBackground(palette().brush(QPalette::Highlight));
        mark.format.setForeground(palette().brush(QPalette::HighlightedText));
        QTextDocument *document = ui_->pagina->document();
        for (mark.cursor = document->find(wanted_, 0); !mark.cursor.isNull();
             mark.cursor = document->find(wanted_, mark.cursor))
            marks << mark;
    }
    ui_->pagina->setExtraSelections(marks);
    if (!marks.isEmpty())
        NextPlace();
}

void Manual::NextPlace()
{
    if (wanted_.pattern().isEmpty())
        return;
    if (!ui_->pagina->find(wanted_)) {
        ui_->pagina->moveCursor(QTextCursor::Start);
        ui_->pagina->find(wanted_);
    }
}

bool Manual::ClaimsShortcut(const QKeyEvent *event) const
{
    return event->modifiers() == Qt::ControlModifier && event->key() == Qt::Key_F;
}

bool Manual::PreviewKey(QKeyEvent *event)
{
    const bool control = event->modifiers().testFlag(Qt::ControlModifier);
    switch (event->key()) {
    case Qt::Key_Escape:
        close();
        return true;
    case Qt::Key_F:
        if (control) {
            ui_->palabra->setFocus();
            ui_->palabra->selectAll();
        }
        return control;
    case Qt::Key_Plus:
        if (control)
            ui_->pagina->zoomIn();
        return control;
    case Qt::Key_Minus:
        if (control)
            ui_->pagina->zoomOut();
        return control;
    case Qt::Key_Left:
        if (!(event->modifiers() & Qt::AltModifier))
            return false;
        ui_->pagina->backward();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!ui_->palabra->hasFocus())
            return false;
        NextPlace();
        return true;
    default:
        return false;
    }
}

void Manual::resizeEvent(QResizeEvent *event)
{
    Window::resizeEvent(event);
    // The layout has not given the page its new room yet.
    QMetaObject::invokeMethod(this, &Manual::FitPictures, Qt::QueuedConnection);
}

void Manual::changeEvent(QEvent *event)
{
    Window::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !chapters_.empty() && ui_->pagina->source().isValid())
        ui_->pagina->reload();
}
