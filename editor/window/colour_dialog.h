#pragma once

#include <QInputDialog>

#include <optional>

namespace editor {

/// Picks one of the 255 colour indices, from a picture of them all or by its number.
class ColourDialog : public QInputDialog {
public:
    /// `start` outside of 1 to 255 begins at the nearest of them.
    ColourDialog(QWidget* owner, int start);

    /// Runs it; nothing on cancel.
    static std::optional<int> pick(QWidget* owner, int start);
};

} // namespace editor
