// Links to the files of the run.

const kAbout = {
  "run.json": "the record of the run", "pipeline.json": "the pipeline as it ran",
  "steps.jsonl": "begin and end of each step", "statistics.json": "the tree of statistics",
  "trace.json": "the timeline for a trace viewer", "log/run.log": "the log",
  "log/output.txt": "printed by modules", "dump": "input and output of each step",
};

function showFiles() {
  const element = section("files", "Files");
  const list = make("ul", {});
  for (const name of links.own) {
    list.append(make("li", {}, linkTo(name), kAbout[name] ? ": " + kAbout[name] : ""));
  }
  for (const file of links.files) {
    const target = file.link ? linkTo(file.link) : make("span", {}, file.path);
    list.append(make("li", {}, target, ": " + file.kind));
  }
  element.append(list);
}
