#include "Lumatile/settings/SettingsAccessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "Lumatile/settings/GridEditorView.h"
#include "Lumatile/settings/RecorderFrame.h"
#include "Lumatile/settings/ShortcutRecorderView.h"
#include "Lumatile/widgets/Card.h"
#include "Lumatile/widgets/LinkLabel.h"

namespace lumatile {

namespace {

/// The grid is one element; where the area lies is in its name.
class GridEditorInterface final : public QAccessibleWidget {
public:
    explicit GridEditorInterface(QWidget* view) : QAccessibleWidget(view, QAccessible::Graphic) {}
};

/// A window of the program, which the toolkit takes for any other part; readers tell the name of
/// nothing but windows when they come in front.
class WindowInterface final : public QAccessibleWidget {
public:
    explicit WindowInterface(QWidget* window) : QAccessibleWidget(window, QAccessible::Window) {}
};

/// A group of rows, told with its title.
class CardInterface final : public QAccessibleWidget {
public:
    explicit CardInterface(QWidget* card) : QAccessibleWidget(card, QAccessible::Grouping) {}
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

/// A button round the recorder, which says itself that it is one.
class RecorderFrameInterface final : public QAccessibleWidget {
public:
    explicit RecorderFrameInterface(RecorderFrame* frame)
        : QAccessibleWidget(frame, QAccessible::Button), frame_(*frame) {}

    QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString& name) override {
        if (name == pressAction()) {
            frame_.begin();
        }
    }

private:
    RecorderFrame& frame_;
};

/// A sentence that leads somewhere, told with its text.
class LinkInterface final : public QAccessibleWidget {
public:
    explicit LinkInterface(LinkLabel* label)
        : QAccessibleWidget(label, QAccessible::Link), label_(*label) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? label_.text() : QAccessibleWidget::text(kind);
    }

    QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString& name) override {
        if (name == pressAction() && label_.onFollow) {
            label_.onFollow();
        }
    }

private:
    LinkLabel& label_;
};

QAccessibleInterface* describe(const QString& className, QObject* object) {
    if (auto* grid = dynamic_cast<GridEditorView*>(object)) {
        return new GridEditorInterface(grid);
    }
    if (auto* field = dynamic_cast<RecorderField*>(object)) {
        return new RecorderInterface(field);
    }
    if (auto* frame = dynamic_cast<RecorderFrame*>(object)) {
        return new RecorderFrameInterface(frame);
    }
    if (auto* link = dynamic_cast<LinkLabel*>(object)) {
        return new LinkInterface(link);
    }
    if (auto* card = dynamic_cast<Card*>(object); card && !card->accessibleName().isEmpty()) {
        return new CardInterface(card);
    }
    // By its name: parts that have no parent yet look like windows too. Dialogs are known as such.
    if (auto* widget = qobject_cast<QWidget*>(object);
        widget != nullptr && className == QLatin1String("QWidget") &&
        widget->objectName() == QLatin1String("settingsWindow")) {
        return new WindowInterface(widget);
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
