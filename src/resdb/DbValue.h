#pragma once

#include <QString>

#include <variant>

namespace velmorak {

// A field value of the store: Null, a whole number, a real or a text. Null is not the empty text.
class DbValue {
  public:
    DbValue() = default; // Null
    DbValue(int v) : v_(qint64(v)) {}
    DbValue(qint64 v) : v_(v) {}
    DbValue(double v) : v_(v) {}
    DbValue(const QString& v) : v_(v) {}
    DbValue(const char* v) : v_(QString::fromUtf8(v)) {}

    bool isNull() const { return std::holds_alternative<std::monostate>(v_); }
    bool isInteger() const { return std::holds_alternative<qint64>(v_); }
    bool isReal() const { return std::holds_alternative<double>(v_); }
    bool isText() const { return std::holds_alternative<QString>(v_); }

    // Null reads as 0; a real is rounded half to even; a text gives its leading number.
    qint64 toInt() const;
    double toDouble() const;
    // Null reads as the empty text; numbers in plain decimal.
    QString toString() const;

    bool operator==(const DbValue&) const = default;

  private:
    std::variant<std::monostate, qint64, double, QString> v_;
};

} // namespace velmorak
