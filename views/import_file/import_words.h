// SPDX-License-Identifier: MIT

#ifndef VIEWS_IMPORT_FILE_IMPORT_WORDS_H_
#define VIEWS_IMPORT_FILE_IMPORT_WORDS_H_

#include <QString>

#include "views/rules/import_file.h"

namespace views {

// What is wrong with a file, and where: "Line 3, column 2 (Hidden): “Perhaps” is neither No nor
// Yes."
QString FaultWords(const rules::ImportFault& fault);

}  // namespace views

#endif  // VIEWS_IMPORT_FILE_IMPORT_WORDS_H_
