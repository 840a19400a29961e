#include "qtText.h"

QString toQString(const std::string& text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

xstd::XString toXString(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    return xstd::XString(std::string(bytes.constData(), static_cast<size_t>(bytes.size())));
}
