#pragma once

#include <QByteArray>
#include <QString>

namespace velmorak::test {

// The report of edid-decode (a Debian package, not ours) on these bytes, with --check when
// asked; empty when the tool is missing or failed.
QString edidDecode(const QByteArray& edid, bool check = false);
// Made by hand: EDID 1.4, digital DVI input with 8 bits a colour, 1920x1200 reduced blanking,
// model year 2022, and an empty CTA-861 extension block (checksums 41H and F7H).
QByteArray harrier24();
// The text of a PDF file by pdftotext (poppler-utils), layout kept; empty on failure.
QString pdfText(const QString& pdf);

} // namespace velmorak::test
