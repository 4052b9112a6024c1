// The user fields: what the site's parameters make of them on the record, in the list and in the search.
#include <basic/conversion.h>
#include <forms/data_control.h>
#include <forms/grid.h>
#include <forms/strings.h>
#include <shell/session.h>
#include <vehicles/fficveh.h>

#include "ui_fficveh.h"

namespace quardele::vehicles {

namespace {

/// The list's column of user field 1 is the fifth.
constexpr int kColumnsBeforeUserFields = 4;
constexpr int kFirstSearchedField = 3;
constexpr int kWholeColumn = -1;
constexpr int kHeader = 0;

}  // namespace

void FFICVEH::init_user() {
    ReadUserParameters();
    HeadUserColumns();
    for (int number = 1; number <= kNamedUserFields; ++number) {
        ShowUserField(number);
    }
}

void FFICVEH::ReadUserParameters() {
    const auto parameters = shell::TheSession().BD_DONNEES->OpenRecordset(u"TPAR", dao::RecordsetType::Table);
    for (int number = 1; number <= kNamedUserFields; ++number) {
        ReadUserField(*parameters, number);
    }
    parameters->Close();
}

void FFICVEH::ReadUserField(const dao::Recordset& parameters, int number) {
    const auto value = [&](const char16_t* suffix) {
        return parameters.Value(forms::ToText(QStringLiteral("TPAR_AFFUSER%1").arg(number)).append(suffix));
    };
    const auto text = [&](const char16_t* suffix) { return forms::ToQString(basic::Joined(value(suffix))); };
    const auto slot = static_cast<std::size_t>(number);

    user_.UserLabel[slot] = text(u"_LIB");
    if (user_.UserLabel[slot].isEmpty()) {
        user_.UserType[slot].clear();
        user_.UserLength[slot] = 0;
        user_.UserDecimals[slot] = 0;
        user_.UserTable[slot].clear();
        user_.UserRecordset[slot].reset();
        return;
    }
    user_.UserType[slot] = text(u"_TYP");
    user_.UserLength[slot] = basic::CInt(value(u"_LNG"));
    user_.UserDecimals[slot] = basic::CInt(value(u"_DEC"));
    if (user_.UserTableSwitch) {
        user_.UserTable[slot] = text(u"_TAB");
        if (!user_.UserTable[slot].isEmpty()) {
            user_.UserRecordset[slot] = user_.UserDatabase->OpenRecordset(
                forms::ToText(user_.UserTable[slot]), dao::RecordsetType::Table);
            user_.UserRecordset[slot]->SetIndex(u"PrimaryKey");
            dao::DBEngine::Instance().Idle(1);
        }
    }
}

/// A field without a label has no column in the list.
void FFICVEH::HeadUserColumns() {
    forms::Grid& list = *ui_->DBG_Liste;
    list.SetReDraw(false);
    for (int number = 1; number <= kNamedUserFields; ++number) {
        const QString& label = user_.UserLabel[static_cast<std::size_t>(number)];
        list.SetCol(kColumnsBeforeUserFields + number);
        list.SetRow(kWholeColumn);
        list.SetColHidden(true);
        if (!label.isEmpty()) {
            list.SetRow(kHeader);
            list.SetText(label);
            list.SetRow(kWholeColumn);
            list.SetColHidden(false);
        }
    }
    list.SetReDraw(true);
}

void FFICVEH::ShowUserField(int number) {
    const QString& label = user_.UserLabel[static_cast<std::size_t>(number)];
    const QString caption = QStringLiteral("%1 - %2").arg(number).arg(label);
    const bool visible = !label.isEmpty();
    const auto show = [&](forms::Label* heading, forms::TextBox* box) {
        heading->SetCaption(caption);
        heading->setVisible(visible);
        box->setAccessibleName(label);
        box->setVisible(visible);
    };
    show(CTL_USER(number), CTX_USER(number));
    if (number >= kFirstSearchedField) {
        show(CTL_USERCHER(number), CTX_USERCHER(number));
    }
}

}  // namespace quardele::vehicles
