// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "logging/QsoEdit.h"
#include "ui/Window.h"

#include <functional>
#include <memory>
#include <optional>

struct Program;
class QLineEdit;
namespace Ui {
class Form5;
}

// One contact to look at, change or delete. The id lives in the title.
//
// | control                  | column                        | guarded by                           |
// |--------------------------|-------------------------------|--------------------------------------|
// | Text1, Text2, Text3      | MyCall, Estacion, Operador    | KeyFilter::Callsign                  |
// | Text4, Text5             | Fecha, Hora                   | CheckDate, CheckTime                 |
// | Text6, Text7             | RSE, RSR                      | RefuseSave                           |
// | Text8                    | Obs                           |                                      |
// | mhz, Text9, Label11      | Frecuencia, Banda             | BandOfFields of the edit window      |
// | Combo2                   | Modo                          |                                      |
// | Text10, Text11           | MiGrid, SuGrid                | KeepGridShape, GridLengthAllowed     |
// | Text12, Check1           | Nombre_Sat                    | RefuseSave                           |
// | SOTA, POTA, MYSOTA, IOTA | the columns of the same name  | upper case                           |
// | subidoALda, ConfALda     | LdA                           | read only                            |
// | Label20, Label21         | park to park, summit to summit |                                     |
// | Command4                 | has its QSL card drawn         | QslCard                             |
class Form5 : public Window {
    Q_OBJECT

public:
    Form5(Program &program, QWidget *owner);
    ~Form5() override;

    enum class EditCaller { None, Form1, Form6 };

    // Opens the contact of a list, with all its fields; the list that `caller` names is refreshed after a change.
    void OpenEditFromList(const QsoRow &row, EditCaller caller);
    // Opens a contact by key: only call, times, reports, station, operator, remarks and mode are shown, and saving
    // writes into the other columns whatever their fields held before. Whose list is refreshed stays as it was.
    void EditByKey(const QsoRow &row);

protected:
    bool PreviewKey(QKeyEvent *event) override;
    void FieldEntered(QWidget *field) override;
    void FieldLeft(QWidget *field) override;

private:
    void AttachFilters();
    void Connect();
    void ShowCommon(const EditFields &fields);
    void ShowRest(const EditFields &fields);
    void ShowModes(const QStringList &modes, const QString &mode);
    void ShowReferenceMarks();
    EditFields ReadFields() const;
    void UpdateBand();
    void KilohertzLeft();
    void Save();
    void Delete();
    void HaveCardDrawn();
    void RefreshCaller();
    QWidget *FieldOf(QsoEdit::Refusal::Field field) const;
    void Open(const EditFields &stored);

    Program &program_;
    std::unique_ptr<Ui::Form5> ui_;
    // The contact as the log holds it, as far as the fields could take it: one that is shorter than a value cuts it,
    // which is no change by the operator.
    EditFields stored_;
    EditCaller caller_ = EditCaller::None;
    bool FillingEditWindow_ = false;
    QString warnedFrequency_;
};
