// The warnings of the log.

const kWarningColumns = [["Time", "time"], ["Level", "level"], ["Text", "text"]];

function showWarnings() {
  const warnings = listOf(run.warnings).filter(isObject);
  const dropped = run.warnings_dropped || 0;
  const number = warnings.length + Number(dropped);
  const element = section("warnings", "Warnings of the log", number > 0 ? grouped(number) : "");
  if (number === 0) {
    element.append(note(run.warnings ? "None." : "None are recorded."));
    return;
  }
  const {element: list, body} = table("Lines of the log of level WARN or above", kWarningColumns);
  element.append(list);
  inPieces(body, warnings, warning => row(kWarningColumns,
    [timeText(warning.time || ""), scalarText(warning.level || ""),
     scalarText(warning.text || "")]), element);
  if (dropped > 0) element.append(note(`${count(dropped, "further line")} only in the log.`));
}
