#include "report/unknown_lines.h"

namespace vantor {

IoResult WriteUnknownLines(const WorksheetList& lines, const std::string& path) {
  TextFileWriter unknown(path);
  for (TextId row : lines.Ids()) unknown.WriteLine(lines.Pool().Text(row));
  unknown.WriteLine("");
  return unknown.Commit();
}

}  // namespace vantor
