// The head of the page and the outcome of the run.

const kOutcomes = {
  "done": ["good", "✓", "Done"],
  "rules broken": ["bad", "✗", "Rules broken"],
  "faulty": ["bad", "✗", "Faulty files"],
  "failed": ["bad", "✗", "Failed"],
  "ended on request": ["warn", "■", "Ended on request"],
  "running": ["warn", "…", "No end"],
};

function fileName(path) {
  return String(path || "").split("/").pop();
}

function showHead() {
  const host = [run.host, run.version].filter(part => part).join(" ");
  const pipeline = fileName(run.pipeline);
  document.getElementById("head").append(
    make("h1", {}, pipeline === "" ? "A run" : pipeline),
    make("p", {class: "note"}, [host, run.begin ? timeText(run.begin) : ""]
      .filter(part => part).join(" · ")));
  document.title = visible([outcome()[2], pipeline, run.host].filter(part => part).join(" · "));
}

function outcome() {
  if (Object.hasOwn(kOutcomes, run.outcome)) return kOutcomes[run.outcome];
  return ["warn", "?", scalarText(run.outcome || "Unknown outcome")];
}

function linkToStep(step) {
  const link = make("a", {href: "#steps"}, make("code", {}, step.name));
  link.addEventListener("click", event => {
    event.preventDefault();
    showStep(step.index);
  });
  return link;
}

// Returns elements that name a step, with a link if the page knows it.
function stepByName(name) {
  const step = steps.findLast(one => one.name === name);
  return step ? linkToStep(step) : make("code", {}, name);
}

function runningSteps() {
  return steps.filter(step => step.state === "running");
}

// Returns elements with the command that runs a step again with its data; none without its dump.
function commandOfStep(name) {
  const files = ["dump", "pipeline.json"];
  const isDumped = run.dumps === "all" && files.every(file => links.own.includes(file));
  if (!name || !isDumped || !run.folder || !run.folder_of_inputs) return [];
  const command = [run.host, "run", `${run.folder}/pipeline.json`, "--inputs", run.folder_of_inputs,
                   "--from", `${run.folder}/dump/${name}`, "--until", name];
  return [make("p", {}, "This step alone, with the same data:"),
          commandElement("Command line of the step", command)];
}

function stateOfUnended() {
  const running = runningSteps();
  const text = "The record of the run has no end: the run is working, or its process died. ";
  if (running.length > 0) {
    return make("p", {}, text, "The step that ran: ", linkToStep(running[running.length - 1]), ".");
  }
  if (steps.length === 0) return make("p", {}, text, "No step is recorded.");
  return make("p", {}, text, "The last step that ran: ", linkToStep(steps[steps.length - 1]), ".");
}

function showOutcome() {
  const [kind, sign, text] = outcome();
  const element = section("outcome", "Outcome");
  const box = make("div", {class: "outcome " + kind},
    make("p", {class: "verdict"}, make("span", {"aria-hidden": "true"}, sign + " "), text));
  if (run.error) box.append(make("p", {class: "error"}, run.error));
  if (run.failed_step) box.append(make("p", {}, "Failed step: ", stepByName(run.failed_step)));
  if (run.outcome === "running") {
    box.append(stateOfUnended());
    if (links.own.includes("log/run.log")) {
      box.append(make("p", {}, "After a crash, the end of ", linkTo("log/run.log", "the log"),
                      " has the call stack."));
    }
  }
  const broken = listOf(run.rules_broken);
  if (broken.length > 0) {
    const few = broken.slice(0, 5).map(rule => make("li", {}, scalarText(rule)));
    box.append(make("p", {}, count(broken.length, "broken rule") + ":"), make("ul", {}, ...few));
    if (broken.length > 5) {
      box.append(make("p", {}, make("a", {href: "#rules"}, "All broken rules")));
    }
  }
  const failed = run.failed_step || (runningSteps().pop() || {}).name;
  element.append(box, ...commandOfStep(failed), pairs(totals()));
  const last = stepEvents.findLast(event => isObject(event) && isObject(event.after));
  if (last) {
    const heading = run.outcome === "running" ? "Last key figures" : "Key figures at the end";
    const figures = leaves(last.after).slice(0, 40).map(([name, value]) =>
      [name, scalarText(value)]);
    element.append(make("h3", {}, heading), pairs(figures));
  }
}

function totals() {
  const entries = [["Time", secondsText(run.wall)], ["Processor time", secondsText(run.cpu)],
                   ["Peak memory", bytesText(run.memory)],
                   ["Steps", steps.length > 0 ? grouped(steps.length) : ""]];
  return entries.filter(([, value]) => value !== "");
}
