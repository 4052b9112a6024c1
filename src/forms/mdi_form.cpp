#include <forms/mdi_form.h>

#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>

#include "form_host.h"

namespace quardele::forms {
namespace {

QPointer<MdiForm>& TheFrame() {
    static QPointer<MdiForm> frame;
    return frame;
}

}  // namespace

MdiForm::MdiForm(QString name) : Form(std::move(name), FormKind::Main) {
    TheFrame() = this;
}

MdiForm* MdiForm::Current() {
    return TheFrame();
}

QMainWindow* MdiForm::MainWindow() const {
    return qobject_cast<QMainWindow*>(Window());
}

QMdiArea* MdiForm::Client() const {
    return MainWindow()->findChild<QMdiArea*>(QStringLiteral("MDI_Client"));
}

void MdiForm::AdoptLayout() {
    QMdiArea* client = Client();
    if (client == nullptr) {
        client = new QMdiArea;
        client->setObjectName(QStringLiteral("MDI_Client"));
        MainWindow()->setCentralWidget(client);
    }
    client->setFrameShape(QFrame::NoFrame);
    client->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    client->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    client->setBackground(client->palette().brush(QPalette::Dark));
    client->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    connect(client, &QMdiArea::subWindowActivated, this, [](QMdiSubWindow* window) {
        if (Form* child = FormHost::Instance().FormOf(window)) {
            FormHost::Instance().Activate(*child);
        }
    });
}

}  // namespace quardele::forms
