#pragma once

#include "cell/XCellExtend.h"
#include "cell/XCellStyle.h"

#include <QFont>
#include <QRgb>
#include <QString>

#include <cstdint>

/// How a cell is painted: font, colours, alignment and borders beside the engine's number format.
/// A table keeps one as prototype, and every new record starts as its clone.
class XTavixCellExtend final : public huge::XCellExtend {
public:
    enum : uint8_t { AlignStart = 0, AlignCenter = 1, AlignEnd = 2 };
    enum : uint8_t { NoBorder = 0, ThinBorder = 1, ThickBorder = 2 };

    /// A record with the family, size and style of `font`, and defaults for the rest.
    explicit XTavixCellExtend(const QFont& font);

    std::unique_ptr<huge::XCellExtend> clone() const override;
    void assign(const huge::XCellExtend& other) override;
    /// Exchanges top with left and bottom with right.
    void transpose() override;
    /// The forms in which documents hold the record. In JSON colours have no alpha and come back
    /// opaque; the bytes keep everything. fromBinary throws std::runtime_error, with the record as
    /// it was, for an image that ends early.
    xstd::XJson toJson() const override;
    std::vector<uint8_t> toBinary() const override;
    void fromJson(const xstd::XKVNode& node) override;
    void fromBinary(const std::vector<uint8_t>& image) override;

    /// The font in which the cell's text is drawn.
    QFont font() const;

    QString fontName;
    QRgb fore = 0;
    QRgb background = 0; ///< 0: no fill
    QRgb borderTop = 0;
    QRgb borderLeft = 0;
    QRgb borderBottom = 0;
    QRgb borderRight = 0;
    bool bold = false;
    bool italic = false;
    bool underLine = false;
    bool multLine = false;
    uint8_t valign = AlignCenter;
    uint8_t align = AlignStart;
    int16_t fontSize = 10;
    uint8_t borderTopStyle = NoBorder;
    uint8_t borderLeftStyle = NoBorder;
    uint8_t borderBottomStyle = NoBorder;
    uint8_t borderRightStyle = NoBorder;

private:
    huge::XCellStyle style() const;
    void setStyle(const huge::XCellStyle& style);
};
