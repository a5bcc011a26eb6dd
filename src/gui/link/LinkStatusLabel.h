#pragma once

#include <QLabel>
#include <QTimer>

#include "link/Link.h"

namespace kelvo {

/// A small light with its word at the foot of an on-line screen: live, late, silent for n s, port lost, off. It follows
/// the link by itself while it is shown. Without a link it shows nothing.
class LinkStatusLabel : public QLabel {
    Q_OBJECT
 public:
    explicit LinkStatusLabel(const Link* link, QWidget* parent = nullptr);
    /// Takes up the present state; runs by itself twice a second.
    void Follow();

 protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

 private:
    const Link* link_;
    QTimer timer_;
};

}  // namespace kelvo
