#include "layout.h"

#include <forms/bound_control.h>
#include <forms/combo.h>
#include <forms/controls.h>
#include <forms/data_control.h>
#include <forms/grid.h>

namespace quardele::forms {
namespace {

DataControl* DataControlNamed(const QWidget& surface, const QString& name) {
    return name.isEmpty() ? nullptr : surface.findChild<DataControl*>(name);
}

}  // namespace

void BindControls(QWidget* surface) {
    for (QWidget* widget : surface->findChildren<QWidget*>()) {
        if (auto* bound = dynamic_cast<BoundControl*>(widget)) {
            if (DataControl* source = DataControlNamed(*surface, bound->DataSourceName())) {
                bound->SetDataSource(source);
            }
        } else if (auto* grid = qobject_cast<Grid*>(widget)) {
            if (DataControl* source = DataControlNamed(*surface, grid->DataSourceName())) {
                grid->SetDataSource(source);
            }
        } else if (auto* combo = qobject_cast<ListCombo*>(widget)) {
            if (DataControl* source = DataControlNamed(*surface, combo->DataSourceName())) {
                combo->SetRowSource(source);
            }
        }
    }
}

void PlaceInStrips(QWidget& surface) {
    for (TabControl* tabs : surface.findChildren<TabControl*>()) {
        for (int page = 0; page < tabs->count(); ++page) {
            for (QWidget* control :
                 tabs->widget(page)->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
                if (control->property("inStrip").toBool()) {
                    tabs->PlaceInStrip(control, page);
                }
            }
        }
    }
}

}  // namespace quardele::forms
