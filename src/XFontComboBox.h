#pragma once

#include "XComboBox.h"

/// Chooses a font family. Each entry of the popup stands in its own face. The list is made when
/// the popup first opens: it costs a look at every installed family.
class XFontComboBox : public XComboBox {
    Q_OBJECT

public:
    explicit XFontComboBox(QWidget* parent);

    void showPopup() override;

private:
    void buildList();
    void fillList();
};
