#pragma once

#include <QLabel>

class ListView;

/// What stands in the block list as long as the catalogue has no directory: the first thing to do. It takes no clicks.
class EmptyHint : public QLabel {
public:
    /// Lives over `blocks` and watches the rows of `directories`.
    EmptyHint(ListView& blocks, const ListView& directories);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Refresh();

    const ListView& catalogue;
};
