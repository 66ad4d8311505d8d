// SPDX-License-Identifier: MIT

#ifndef VIEWS_IMPORT_FILE_IMPORT_WORDS_H_
#define VIEWS_IMPORT_FILE_IMPORT_WORDS_H_

#include <QString>

#include "views/rules/import_file.h"

namespace views {

// What is wrong with a file, and where: "Line 3, column 2 (Hidden): “Perhaps” is neither No nor
// Yes."
QString FaultWords(const rules::ImportFault& fault);

// What of the file is not imported though it differs: "Only to be read, and not imported: line 3
// (Station Label): “CAM 9”."; empty when there is none.
QString ReadOnlyWords(const rules::ImportPlan& plan);

}  // namespace views

#endif  // VIEWS_IMPORT_FILE_IMPORT_WORDS_H_
