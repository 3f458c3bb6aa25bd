#pragma once

#include <QByteArray>

// A statistics reply as the royalties service writes it, with `rows` book rows: every row key, the
// server's own extra columns, nulls for formats a book does not have, custom format maps on some
// rows and a currency per marketplace. The same row count always gives the same bytes.
QByteArray statisticsBody(int rows);
