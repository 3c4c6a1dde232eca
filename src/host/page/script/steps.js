// The table of steps.

const kStepColumns = [["Step", "name"], ["Share", "share"], ["Time", "number"],
                      ["Processor", "number"], ["Peak memory", "number"],
                      ["Changed key figures", "changes"]];

let showStep = () => {};

// Returns the scalars that differ between two values, as [path, before, after].
function changesOf(before, after) {
  if (after === undefined) return [];
  const old = new Map(leaves(before === undefined ? {} : before));
  const changes = [];
  for (const [path, value] of leaves(after)) {
    if (old.get(path) !== value) changes.push([path, old.get(path), value]);
    old.delete(path);
  }
  for (const [path, value] of old) changes.push([path, value, undefined]);
  return changes;
}

function changeElement([path, before, after]) {
  const text = value => value === undefined ? "none" : scalarText(value);
  return make("li", {}, make("span", {class: "name"}, path), " ",
    before === undefined ? "" : text(before) + " → ", make("strong", {}, text(after)));
}

function changesCell(step) {
  const changes = changesOf(step.before, step.after);
  const few = make("ul", {}, ...changes.slice(0, 5).map(changeElement));
  if (changes.length <= 5) return changes.length > 0 ? few : "";
  const rest = changes.slice(5);
  return [few, foldable(`${grouped(rest.length)} more`, body =>
    body.append(make("ul", {}, ...rest.map(changeElement))))];
}

function stateText(step) {
  if (step.state === "failed") return make("span", {class: "state bad"}, "✗ failed");
  return step.state === "running" ? make("span", {class: "state warn"}, "… no end") : null;
}

function nameCell(step, isInOrder) {
  const short = step.name.split("/").pop();
  const about = [];
  if (step.class && !short.endsWith("_" + step.class)) about.push(make("span", {}, step.class));
  if (step.place) about.push(make("span", {}, fileName(step.place)));
  if (links.own.includes("dump")) about.push(linkTo("dump/" + step.name, "dump"));
  if (step.hasSteps) {
    about.push(button("zoom", () => {
      zoomTo(step.at, step.at + step.span);
      document.getElementById("timeline").focus();
    }, {"aria-label": `Show ${visible(step.name)} in the timeline`}));
  }
  const cell = make("div", {}, make("code", {}, isInOrder ? short : step.name), " ",
                    stateText(step), make("div", {class: "about"}, ...about));
  if (isInOrder) cell.style.paddingInlineStart = `${Math.min(step.depth, 12)}em`;
  return cell;
}

function stepRow(step, isInOrder) {
  const share = step.span / runSeconds || 0;
  return row(kStepColumns,
    [nameCell(step, isInOrder), step.wall === undefined ? "" : [bar(share), percentText(share)],
     secondsText(step.wall), secondsText(step.cpu), bytesText(step.memory), changesCell(step)],
    {"data-step": step.index, tabindex: "-1", class: step.hasSteps ? "chain" : ""});
}

function showSteps() {
  const element = section("steps", "Steps", steps.length > 0 ? grouped(steps.length) : "");
  if (steps.length === 0) {
    element.append(note("No steps are recorded."));
    return;
  }
  const {element: list, body} = table("Each step with its share of the run's time", kStepColumns);
  const below = make("div", {});
  let wanted = "";
  let order = "run";
  let shownSteps = steps;
  let showPieceOf = null;
  const refresh = () => {
    shownSteps = steps.filter(step => step.name.toLowerCase().includes(wanted));
    if (order === "time") shownSteps = [...shownSteps].sort((a, b) => b.span - a.span);
    below.replaceChildren();
    if (shownSteps.length === 0) below.append(note("No step has this name."));
    const isInOrder = order === "run" && wanted === "";
    showPieceOf = inPieces(body, shownSteps, step => stepRow(step, isInOrder), below);
  };
  const choice = make("select", {}, make("option", {value: "run"}, "as they ran"),
                      make("option", {value: "time"}, "longest first"));
  choice.addEventListener("change", () => {
    order = choice.value;
    refresh();
  });
  const search = searchField("Find a step", text => {
    wanted = text;
    refresh();
  });
  showStep = index => {
    if (!shownSteps.includes(steps[index])) {
      search.querySelector("input").value = wanted = "";
      refresh();
    }
    showPieceOf(shownSteps.indexOf(steps[index]));
    const shown = body.querySelector(`[data-step="${index}"]`);
    shown.focus();
    shown.scrollIntoView({block: "center"});
  };
  if (steps.length > 10) {
    const sorting = make("label", {class: "field"}, make("span", {}, "Order"), choice);
    element.append(make("div", {class: "fields"}, search, sorting));
  }
  element.append(list, below);
  refresh();
}
