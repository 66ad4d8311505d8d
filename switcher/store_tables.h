// SPDX-License-Identifier: MIT
//
// Accepted tables on their way into the configuration database.
//
// Each operation is one batch in a record set of its own: it stores all that it is given or, on
// a failure, nothing, and announces what it has changed; the shared record set stays where it
// stands, and a change begun in it stays begun.  A flag string of which a part is stored and that
// is shorter than 64 characters is filled up with "0".

#ifndef SWITCHER_STORE_TABLES_H_
#define SWITCHER_STORE_TABLES_H_

#include <cstdint>
#include <span>

#include "db/jet/database.h"
#include "model/status.h"
#include "stations/change.h"
#include "switcher/wire/messages/button_data.h"
#include "switcher/wire/messages/label_texts.h"
#include "switcher/wire/messages/opto_data.h"

namespace switcher {

// How far a table found the records that it is for.
enum class Stored {
  Nothing,  // none of them
  Part,     // those before the first that is lacking
  All,
};

// Stores the labels of stations 1, 2, 3 and so on.  A station without a record ends it; the
// labels before it are stored.
//
// Selector kInputLabels stands for the input labels, any other for the output labels, and
// kOutputLabels alone also says who is hidden: Hidden becomes 1 where the label has the mark, 0
// where it has none.  A marked label whose other characters are those of the stored one leaves
// it as it is, since its first character is not known; else it is stored as received.
model::Status StoreLabels(jet::Database& database, const LabelTexts& texts,
                          const stations::Author& author, Stored* stored);

// Stores the flags of a station as the first characters of a flag string field (db::kInhibitsField,
// db::kRelaysField); what stands behind them in the field is kept.
model::Status StoreFlags(jet::Database& database, int station, const char* field,
                         std::span<const std::uint8_t> flags, const stations::Author& author,
                         Stored* stored);

// Stores the programming of a station's buttons.  Of the target stations only as many as are
// given are replaced.
model::Status StoreButtons(jet::Database& database, const ButtonData& data,
                           const stations::Author& author, Stored* stored);

// Stores opto i into the i-th record in the order of the station numbers, as far as there are
// records.
model::Status StoreOptos(jet::Database& database, const OptoData& data,
                         const stations::Author& author, Stored* stored);

}  // namespace switcher

#endif  // SWITCHER_STORE_TABLES_H_
