#include "Lumatile/settings/SettingsAccessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "Lumatile/settings/GridEditorView.h"
#include "Lumatile/settings/ShortcutRecorderView.h"

namespace lumatile {

namespace {

/// The grid is one element; where the area lies is in its name.
class GridEditorInterface final : public QAccessibleWidget {
public:
    explicit GridEditorInterface(QWidget* view) : QAccessibleWidget(view, QAccessible::Graphic) {}
};

/// A button: pressing it begins to record.
class RecorderInterface final : public QAccessibleWidget {
public:
    explicit RecorderInterface(RecorderField* field)
        : QAccessibleWidget(field, QAccessible::Button), field_(*field) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? field_.accessibleDescription()
                                          : QAccessibleWidget::text(kind);
    }

    QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString& name) override {
        if (name == pressAction()) {
            field_.setFocus(Qt::OtherFocusReason);
        }
    }

private:
    RecorderField& field_;
};

QAccessibleInterface* describe(const QString& /*className*/, QObject* object) {
    if (auto* grid = dynamic_cast<GridEditorView*>(object)) {
        return new GridEditorInterface(grid);
    }
    if (auto* field = dynamic_cast<RecorderField*>(object)) {
        return new RecorderInterface(field);
    }
    return nullptr;
}

}  // namespace

void describeSettingsControls() {
    static bool isDone = false;
    if (!isDone) {
        isDone = true;
        QAccessible::installFactory(describe);
    }
}

}  // namespace lumatile
