// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The least that a window with a log page can cost: eight fields, a table of 20 by 23 and one query, straight from the
// engine. Called with the database and the log's name it shows itself, waits as the program does, fills the table,
// tells its marks as the program does and ends.

#include <QApplication>
#include <QFormLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <chrono>
#include <cstdio>
#include <sqlite3.h>

namespace {

constexpr int fields = 8, rows = 20, columns = 23;
constexpr int waiting = 900; // milliseconds, as in the program, so that both have been idle for as long

void Mark(const char *name)
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const qint64 microseconds = std::chrono::duration_cast<std::chrono::microseconds>(now).count();
    std::fprintf(stderr, "mark %s %lld\n", name,
        static_cast<long long>(microseconds - qEnvironmentVariable("TORDILLO_T0").toLongLong()));
}

class BareWindow : public QWidget {
public:
    BareWindow()
        : table_(rows, columns)
    {
        auto *layout = new QVBoxLayout(this);
        auto *form = new QFormLayout;
        for (int i = 0; i < fields; ++i)
            form->addRow(QString::number(i), new QLineEdit);
        layout->addLayout(form);
        layout->addWidget(&table_);
        resize(1366, 768);
    }

    bool Fill(const char *path, const char *log)
    {
        sqlite3 *database = nullptr;
        sqlite3_stmt *page = nullptr;
        const char *sql = "SELECT id,Modo,Banda,MyCall,Estacion,Fecha,Hora,RSE,RSR,Obs,Operador,\"Nombre Log\","
                          "Frecuencia,MiGrid,SuGrid,LdA,Nombre_Sat,Argento,SOTA,IOTA,POTA,MYSOTA,Perfil FROM Tabla1 "
                          "WHERE \"Nombre Log\"=? AND Modo<>'' ORDER BY Fecha DESC, Hora DESC, id DESC LIMIT 20";
        if (sqlite3_open_v2(path, &database, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK
            || sqlite3_prepare_v2(database, sql, -1, &page, nullptr) != SQLITE_OK)
            return false;
        sqlite3_bind_text(page, 1, log, -1, SQLITE_STATIC);
        int row = 0;
        for (; row < rows && sqlite3_step(page) == SQLITE_ROW; ++row) {
            for (int column = 0; column < columns; ++column) {
                const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(page, column));
                table_.setItem(row, column, new QTableWidgetItem(QString::fromUtf8(text)));
            }
        }
        sqlite3_finalize(page);
        sqlite3_close(database);
        table_.viewport()->repaint();
        return row == rows;
    }

    std::function<void()> onShown;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QWidget::paintEvent(event);
        // The children are painted and the picture is out once the event loop is reached again.
        if (onShown)
            QTimer::singleShot(0, this, std::exchange(onShown, nullptr));
    }

private:
    QTableWidget table_;
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (argc != 3)
        return 2;
    BareWindow window;
    window.onShown = [&] {
        Mark("window-shown");
        QTimer::singleShot(waiting, &window, [&] {
            Mark("timer2");
            const bool filled = window.Fill(argv[1], argv[2]);
            if (filled)
                Mark("page-shown");
            QCoreApplication::exit(filled ? 0 : 1);
        });
    };
    window.show();
    return QCoreApplication::exec();
}
