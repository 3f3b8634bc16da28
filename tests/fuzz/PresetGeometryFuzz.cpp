// Any value is no point, size or rectangle, or one that is written and read back to the last bit.
#include "Base/Observable.h"
#include "Models/Presets/PresetGeometry.h"

#include <QJsonDocument>

#include <cstdint>
#include <cstdlib>

using namespace tessara;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size);

namespace {

template <typename Value>
void check(const QJsonValue &json, tl::expected<Value, QString> (*fromJson)(const QJsonValue &))
{
    const tl::expected<Value, QString> value = fromJson(json);
    if (!value) {
        if (value.error().isEmpty())
            std::abort();
        return;
    }
    const QByteArray written = QJsonDocument(geometryToJson(*value)).toJson();
    const auto read = fromJson(QJsonDocument::fromJson(written).array());
    if (!read || !isSame(*read, *value))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(bytes), qsizetype(size));
    for (const QJsonValue json : QJsonDocument::fromJson('[' + text + ']').array()) {
        check<QPointF>(json, pointFromJson);
        check<QSizeF>(json, sizeFromJson);
        check<QRectF>(json, rectFromJson);
    }
    return 0;
}
