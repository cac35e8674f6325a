#include "report/unknown_lines.h"

namespace vantor {

IoResult WriteUnknownLines(const WorksheetList& lines, const std::string& side_dir) {
  TextFileWriter unknown(side_dir + std::string(kUnknownFile));
  for (TextId row : lines.Ids()) unknown.WriteLine(lines.Pool().Text(row));
  unknown.WriteLine("");
  return unknown.Commit();
}

}  // namespace vantor
