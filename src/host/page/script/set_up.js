// The command line, the files and the machine of the run.

// Members of the record that other sections show.
const kShown = new Set(["libvarrow_run", "outcome", "error", "failed_step", "rules_broken",
  "rules_kept", "warnings", "warnings_dropped", "wall", "cpu", "memory", "files", "entries", "host",
  "version", "library", "compiler", "pipeline", "command_line", "begin", "end", "configuration",
  "inputs", "plugins", "program", "libraries", "seeds", "machine"]);

function quoted(argument) {
  const text = scalarText(argument);
  return /^[\w@%+=:,./-]+$/.test(text) ? text : "'" + text.replace(/'/g, "'\\''") + "'";
}

const kFileColumns = [["File", "path"], ["Version", "version"],
                      ["SHA-256 or build id", "checksum"]];

function fileTable(heading, files) {
  const {element, body} = table(heading, kFileColumns);
  inPieces(body, files.filter(isObject), file => row(kFileColumns,
    [scalarText(file.file || file.name || ""), scalarText(file.version || ""),
     make("code", {}, scalarText(file.sha256 || file.build_id || "none"))]));
  return element;
}

// Returns "Folder of inputs" for the name of a member.
function headingOf(name) {
  return name.charAt(0).toUpperCase() + name.slice(1).replace(/_/g, " ");
}

// Returns the text of a member of the record that the page does not know.
function factText(value) {
  if (Array.isArray(value)) {
    return value.map(each => typeof each === "object" ? preview(each) : each).join(", ");
  }
  if (!isObject(value)) return scalarText(value);
  return leaves(value).map(([key, each]) => `${key} ${scalarText(each)}`).join(", ");
}

function machineText(machine) {
  const {name, system, processors, memory} = machine;
  return [name, system, processors && count(processors, "processor"), bytesText(memory)]
    .filter(part => part).join(", ");
}

function commandElement(label, words) {
  return make("pre", {class: "command", tabindex: "0", role: "region", "aria-label": label},
              words.map(quoted).join(" "));
}

function showSetUp() {
  const element = section("set_up", "How it was run");
  const command = [run.host, ...listOf(run.command_line)].filter(part => part !== undefined);
  element.append(commandElement("Command line", command));
  const facts = [["Pipeline", run.pipeline], ["Host", [run.host, run.version].join(" ").trim()],
    ["libvarrow", run.library], ["Compiler", run.compiler],
    ["Machine", isObject(run.machine) ? machineText(run.machine) : ""],
    ["Begin", run.begin ? timeText(run.begin) : ""], ["End", run.end ? timeText(run.end) : "none"]];
  for (const [name, value] of Object.entries(run)) {
    if (!kShown.has(name)) facts.push([headingOf(name), factText(value)]);
  }
  element.append(pairs(facts.filter(([, value]) => value !== undefined && value !== "")));
  const seeds = listOf(run.seeds).filter(isObject);
  if (seeds.length > 0) {
    const list = make("div", {class: "tree"});
    element.append(make("h3", {}, "Seeds"), list);
    inPieces(list, seeds, seed => leaf(scalarText(seed.path),
      make("span", {class: "value"}, scalarText(seed.value))), element);
  }
  const programs = [run.program, ...listOf(run.libraries)].filter(isObject);
  for (const [heading, files] of [["Input files", listOf(run.inputs)],
                                  ["Plug-ins", listOf(run.plugins)],
                                  ["Program and libraries", programs]]) {
    if (files.length > 0) element.append(fileTable(heading, files));
  }
  if (run.configuration !== undefined) {
    element.append(make("h3", {}, "Configuration, with every default"),
      make("div", {class: "tree"}, treeOf("pipeline", run.configuration)));
  }
}
