#include "guided_tour.h"

#include <algorithm>
#include <set>
#include <stdexcept>

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPixmap>
#include <QTemporaryDir>
#include <QTimer>

#include <reminders/fchxmodl.h>
#include <reminders/frelances.h>
#include <reports/f_rpt.h>
#include <vehicles/fficveh.h>
#include "operator.h"
#include "pdf_picture.h"
#include "window_picture.h"

namespace quardele::demo {

namespace fs = std::filesystem;

namespace {

using reminders::FRELANCES;

// Columns of the history and what a date takes in it, without its time.
constexpr int kDateColumn = 1;
constexpr int kDateLength = 10;

// Columns of the reminders.
constexpr int kRegistrationColumn = 2;
constexpr int kCustomerColumn = 4;
constexpr int kLetterColumn = 8;

class Tour {
 public:
    Tour(forms::MdiForm& mainWindow, fs::path driveC, fs::path pictures, QString reference)
        : mainWindow_(mainWindow),
          driveC_(std::move(driveC)),
          pictures_(std::move(pictures)),
          reference_(std::move(reference)) {}

    TourResult Take() {
        fs::create_directories(pictures_);
        Settle();
        Show("Démarrage", "demarrage");
        ShowVehicles();
        ShowReminders();
        MakeLetters();
        ShowChangeLog();
        return std::move(result_);
    }

 private:
    void Show(const std::string& title, const std::string& name) {
        ShowWidget(*mainWindow_.Window(), title, name);
    }

    void ShowWidget(QWidget& widget, const std::string& title, const std::string& name) {
        Keep(widget.grab(), title, name);
    }

    /// A window with its caption.
    void ShowWindow(QWidget& window, const std::string& title, const std::string& name) {
        Keep(PictureWithCaption(window), title, name);
    }

    void Keep(const QPixmap& pixels, const std::string& title, const std::string& name) {
        const fs::path picture = pictures_ / (name + ".png");
        if (!pixels.save(QString::fromStdString(picture.string()))) {
            throw std::runtime_error("Impossible d'écrire " + picture.string());
        }
        result_.stages.push_back({title, picture});
    }

    void ShowVehicles() {
        ClickMenu(mainWindow_, QStringLiteral("M_VEHIC"));
        PressKeys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down});
        Show("Liste des véhicules", "liste");
        ShowListTools();
        PressKeys({Qt::Key_Return});
        Show("Fiche d'un véhicule", "fiche");
        ShowHistory();
        ShowSheet();
        PressKeys({Qt::Key_F8});
        EnterVehicle();
        ChangeAndDeleteVehicle();
        forms::Instance<vehicles::FFICVEH>().Unload();
        Settle();
    }

    /// The tools of the list on the column of makes; all vehicles are back at the end.
    void ShowListTools() {
        constexpr int kMakeColumn = 2;
        auto& list = dynamic_cast<forms::Grid&>(VehicleControl("DBG_Liste"));
        ClickCell(list, kMakeColumn, list.ActiveRow());
        const auto tool = [](const char* button) { Click(VehicleControl(button)); };
        InDialog([&] { tool("Cmd_ToolBar_0"); },
                 [this](QWidget& dialog) {
                     PressKeys({Qt::Key_Tab});
                     TypeText(QStringLiteral("REN"));
                     ShowWindow(dialog, "Sélection", "selection");
                     PressKeys({Qt::Key_Return, Qt::Key_Return});
                 });
        InDialog([&] { tool("Cmd_ToolBar_2"); },
                 [this](QWidget& dialog) {
                     ShowWindow(dialog, "Classement", "classement");
                     PressKeys({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return});
                 });
        Show("Véhicules choisis et classés", "liste-choisie");
        PrintList();
        InDialog([] { PressKeys({Qt::Key_Menu}); },
                 [this](QWidget& dialog) {
                     TypeText(QStringLiteral("RENAULT"));
                     // To the options, to the button, and press it: the program sends the Tab of each Enter.
                     for (int press = 0; press < 3; ++press) {
                         PressKeys({Qt::Key_Return});
                     }
                     ShowWindow(dialog, "Recherche", "recherche");
                     PressKeys({Qt::Key_Tab, Qt::Key_Return});
                 });
        InDialog([&] { tool("Cmd_ToolBar_0"); },
                 [](QWidget&) {
                     PressKeys({Qt::Key_Tab, Qt::Key_Return, Qt::Key_Return});
                 });
    }

    /// Prints the list into a file, as the program offers where there is no printer; elsewhere the preview is
    /// only closed.
    void PrintList() {
        const QTemporaryDir folder;
        const QString pdf = folder.filePath(QStringLiteral("liste.pdf"));
        InDialog([] { Click(VehicleControl("Cmd_ToolBar_3")); },
                 [&](QWidget& dialog) {
                     if (auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
                         name->setText(pdf);
                         Click(*dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save));
                     } else {
                         dialog.close();
                     }
                 });
        const fs::path picture = pictures_ / "impression-liste.png";
        if (PictureOfPdf(pdf.toStdString(), picture)) {
            result_.stages.push_back({"Liste imprimée", picture});
        }
    }

    /// Opens a dialog and works in it.
    void InDialog(const std::function<void()>& open, const std::function<void(QWidget&)>& work) {
        {
            const ModalWatcher watcher(work);
            open();
        }
        // Without a desktop nobody makes the window behind the dialog active again.
        mainWindow_.Window()->activateWindow();
        Settle();
        VehicleControl("DBG_Liste").setFocus();
        Settle();
    }

    /// The jobs of a vehicle that has some, the text of one of them, and a selection by date.
    void ShowHistory() {
        ToVehicleWithJobs();
        Show("Historique des visites", "historique");
        ShowJobDetail();
        Click(VehicleControl("Cmd_ToolBar_Histo_0"));
        VehicleControl("BXC_ChoixDate").setFocus();
        PressKeys({Qt::Key_Down, Qt::Key_Return});
        TypeText(HistoryCell(kDateColumn, Jobs().MaxRows() / 2).left(kDateLength));
        PressKeys({Qt::Key_Return});
        Show("Sélection par date", "historique-date");
        PressKeys({Qt::Key_Return});
        Show("Affaires choisies", "historique-choisi");
        PressKeys({Qt::Key_Escape});
    }

    /// Goes down the list until the history of a vehicle fills some lines.
    static void ToVehicleWithJobs() {
        constexpr int kJobs = 6;
        constexpr int kMostVehicles = 300;
        for (int vehicle = 0; vehicle < kMostVehicles; ++vehicle) {
            Click(VehicleControl("CMD_HistoVis"));
            if (Jobs().MaxRows() >= kJobs) {
                return;
            }
            PressKeys({Qt::Key_Escape, Qt::Key_F8, Qt::Key_Down, Qt::Key_Return});
        }
    }

    /// Of the first job that has a text; the history's list has the cursor in its first column afterwards.
    void ShowJobDetail() {
        const auto& detail = static_cast<const forms::MemoBox&>(VehicleControl("CTX_DETAILAFF"));
        for (int row = 1; row < Jobs().MaxRows() && detail.Text().isEmpty(); ++row) {
            PressKeys({Qt::Key_Down});
        }
        PressKeys({Qt::Key_End, Qt::Key_Space});
        Show("Détail d'une affaire", "historique-detail");
        PressKeys({Qt::Key_Escape, Qt::Key_Home});
    }

    static forms::Grid& Jobs() { return static_cast<forms::Grid&>(VehicleControl("DBG_HISTO")); }

    static QString HistoryCell(int column, int row) {
        Jobs().SetRow(row);
        Jobs().SetCol(column);
        return Jobs().Text();
    }

    /// In the viewer, and its page.
    void ShowSheet() {
        constexpr int kGlanceMilliseconds = 30;
        ToVehicleWithFullRecord();
        const QTemporaryDir folder;
        const QString pdf = folder.filePath(QStringLiteral("fiche.pdf"));
        const ModalWatcher confirmation([](QWidget& window) {
            if (window.findChild<QLabel*>(QStringLiteral("MsgBox_Text")) != nullptr) {
                PressKeys({Qt::Key_Return});
            }
        });
        QTimer glance;
        QObject::connect(&glance, &QTimer::timeout, &glance, [&] {
            if (QWidget* const viewer = ViewerWithPages()) {
                glance.stop();
                ShowWindow(*viewer, "Aperçu de la fiche", "fiche-apercu");
                SavePdf(*viewer, pdf);
                viewer->close();
            }
        });
        glance.start(kGlanceMilliseconds);
        Click(VehicleControl("Cmd_Imprimer_0"));
        // Without a desktop nobody makes the window behind the viewer active again.
        mainWindow_.Window()->activateWindow();
        Settle();
        const fs::path picture = pictures_ / "fiche-imprimee.png";
        if (PictureOfPdf(pdf.toStdString(), picture)) {
            result_.stages.push_back({"Fiche imprimée", picture});
        }
    }

    /// It stands there, without pages, behind the confirmation too, and while that goes away.
    static QWidget* ViewerWithPages() {
        if (!forms::IsLoaded<reports::F_RPT>()) {
            return nullptr;
        }
        const auto& form = forms::Instance<reports::F_RPT>();
        const bool ready =
            form.CRViewer91->Shown() != nullptr && QApplication::activeModalWidget() == form.Window();
        return ready ? form.Window() : nullptr;
    }

    /// By the viewer's own button.
    static void SavePdf(QWidget& viewer, const QString& path) {
        const ModalWatcher watcher([&path](QWidget& dialog) {
            if (auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
                name->setText(path);
                Click(*dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save));
            }
        });
        Click(*viewer.findChild<QWidget*>(QStringLiteral("Cmd_Pdf")));
    }

    /// Goes down the list to a vehicle with driver and note. No report takes an apostrophe in a user field.
    static void ToVehicleWithFullRecord() {
        constexpr int kMostVehicles = 300;
        for (int vehicle = 0; vehicle < kMostVehicles; ++vehicle) {
            const QString driver = static_cast<const forms::TextBox&>(VehicleControl("CTX_USER_10")).Text();
            const QString note = static_cast<const forms::MemoBox&>(VehicleControl("CTX_Note1")).Text();
            if (!driver.isEmpty() && !driver.contains(u'\'') && !note.isEmpty()) {
                return;
            }
            PressKeys({Qt::Key_F8, Qt::Key_Down, Qt::Key_Return});
        }
    }

    void ShowChangeLog() {
        const ModalWatcher watcher([this](QWidget& dialog) {
            ShowWindow(dialog, "Évolutions du module", "evolutions");
            dialog.close();
        });
        ClickMenu(mainWindow_, QStringLiteral("M_INFOS"));
    }

    /// A new vehicle with two visits, typed from box to box and from cell to cell.
    void EnterVehicle() {
        Click(VehicleControl("Cmd_ADD"));
        for (const char16_t* text : {u"ZZ-001-QD", u"RENAULT", u"Master L2H2", u"", u"CT", u"24",
                                     u"14/01/2026", u"VID", u"12", u"30/08/2025", u"HA"}) {
            TypeText(QString::fromUtf16(text));
            PressKeys({Qt::Key_Return});
        }
        Show("Type de travaux inconnu : le choix s'ouvre", "fiche-types");
        PressKeys({Qt::Key_Return, Qt::Key_Return});
        Show("Nouvelle fiche et ses visites", "fiche-nouvelle");
        Click(VehicleControl("Cmd_Update"));
        Show("Fiche enregistrée", "fiche-enregistree");
    }

    void ChangeAndDeleteVehicle() {
        Enter(VehicleControl("CTX_ComplIdent"), QStringLiteral("Master L3H2"));
        Show("Modification en cours", "fiche-saisie");
        Click(VehicleControl("Cmd_Update"));
        const ModalWatcher watcher([this](QWidget& box) {
            ShowWidget(box, "Suppression à confirmer", "suppression");
            PressKeys({Qt::Key_Return});
        });
        Click(VehicleControl("Cmd_Delete"));
        // Without a desktop nobody makes the window behind the box active again.
        mainWindow_.Window()->activateWindow();
        Settle();
        PressKeys({Qt::Key_F8});
        Show("Liste après la suppression", "liste-suppression");
    }

    static QWidget& VehicleControl(const char* name) {
        QWidget* const surface = forms::Instance<vehicles::FFICVEH>().Surface();
        auto* const control = surface->findChild<QWidget*>(QString::fromLatin1(name));
        if (control == nullptr) {
            throw std::runtime_error(std::string("Pas de contrôle ") + name);
        }
        return *control;
    }

    void ShowReminders() {
        ClickMenu(mainWindow_, QStringLiteral("M_RELANC"));
        auto& form = forms::Instance<FRELANCES>();
        Enter(*form.CTX_DATEREL, reference_);
        ShowCalendar(form);
        ToFirstFullCustomer(form);
        Show("Visites à échéance", "relances");
        Tick(*form.DBG_RELANCES, kLetterColumn, RowsOfThreeCustomers(form));
        Show("Lignes cochées", "relances-cochees");
    }

    /// Opened beside the date and left without picking one.
    void ShowCalendar(FRELANCES& form) {
        form.CTX_DATEREL->setFocus();
        {
            const ModalWatcher watcher([this](QWidget& calendar) {
                Keep(PictureWithWindowInFront(*mainWindow_.Window(), calendar), "Calendrier", "calendrier");
                PressKeys({Qt::Key_Escape});
            });
            PressKeys({Qt::Key_F4});
        }
        // Without a desktop nobody makes the window behind the calendar active again.
        mainWindow_.Window()->activateWindow();
        Settle();
    }

    /// The rows of a customer with at least two visits are the first to be seen.
    static void ToFirstFullCustomer(FRELANCES& form) {
        const std::vector<int> rows = RowsOfThreeCustomers(form);
        if (!rows.empty()) {
            form.DBG_RELANCES->SetActiveCell(kLetterColumn, rows.front());
            form.DBG_RELANCES->scrollTo(form.DBG_RELANCES->currentIndex(), QAbstractItemView::PositionAtTop);
            Settle();
        }
    }

    /// All rows of the first three customers that have a code, a vehicle and more than one visit due.
    static std::vector<int> RowsOfThreeCustomers(FRELANCES& form) {
        forms::Grid& grid = *form.DBG_RELANCES;
        const auto cell = [&grid](int row, int col) {
            grid.SetRow(row);
            grid.SetCol(col);
            return grid.Text();
        };
        std::vector<int> chosen;
        std::set<QString> customers;
        for (int row = 1; row <= grid.MaxRows() && customers.size() < kLetters;) {
            const QString customer = cell(row, kCustomerColumn);
            const int first = row;
            while (row <= grid.MaxRows() && cell(row, kCustomerColumn) == customer) {
                ++row;
            }
            const bool full = row - first > 1 && !customer.isEmpty() && IsCode(customer) &&
                              !cell(first, kRegistrationColumn).isEmpty();
            if (full) {
                customers.insert(customer);
                for (int line = first; line < row; ++line) {
                    chosen.push_back(line);
                }
            }
        }
        return chosen;
    }

    /// A code that can be part of a file name.
    static bool IsCode(const QString& customer) {
        return std::all_of(customer.begin(), customer.end(), [](QChar c) { return c.isLetterOrNumber(); });
    }

    void MakeLetters() {
        const ModalWatcher watcher([this](QWidget& window) { AnswerWindow(window); });
        Click(*forms::Instance<FRELANCES>().Cmd_Editer);
        // Lets go of the last letter: its window stays for the operator, and without windows the office ends.
        forms::Instance<FRELANCES>().Unload();
        Settle();
        for (const auto& entry : fs::directory_iterator(driveC_ / "QUARDELE" / "DATA")) {
            if (entry.path().extension() == ".RVE") {
                result_.letters.push_back(entry.path());
            }
        }
        std::sort(result_.letters.begin(), result_.letters.end());
    }

    /// The choice of template is shown and confirmed; message boxes are written down and answered.
    void AnswerWindow(QWidget& window) {
        if (auto* text = window.findChild<QLabel*>(QStringLiteral("MsgBox_Text"))) {
            result_.messages.push_back(text->text().toStdString());
        } else {
            ShowWidget(window, "Choix du modèle", "modele");
        }
        PressKeys({Qt::Key_Return});
    }

    forms::MdiForm& mainWindow_;
    fs::path driveC_;
    fs::path pictures_;
    QString reference_;
    TourResult result_;
};

}  // namespace

TourResult TakeTour(forms::MdiForm& mainWindow, const fs::path& driveC, const fs::path& pictures,
                    const QString& reference) {
    return Tour(mainWindow, driveC, pictures, reference).Take();
}

}  // namespace quardele::demo
