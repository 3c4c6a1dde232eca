// The tree of statistics.

const kFewEntries = 150;  // so many statistics are shown unfolded

// Returns true for the form of a container: a list of objects with one member each.
function isContainer(value) {
  return Array.isArray(value) &&
    value.every(entry => isObject(entry) && Object.keys(entry).length === 1);
}

function isHistogram(value) {
  return isObject(value) && "sum/count" in value && "count" in value;
}

function isDistribution(value) {
  return isObject(value) && "__sum__" in value && "__key_count__" in value;
}

function isTimes(value) {
  return isObject(value) && typeof value.minutes === "number" &&
    Object.keys(value).every(key => key === "minutes" || key === "timestamps");
}

function isProgress(value) {
  return isObject(value) && typeof value.progressPercent === "number";
}

function isRejections(value) {
  return isObject(value) && isObject(value.__rejections__) && Object.keys(value).length === 1;
}

const kBarColumns = [["Value", "name"], ["Bar", "share"], ["Count", "number"], ["Share", "number"]];

// Adds bars of {name, size, count, share} in the order of their names.
function addBars(parent, caption, list) {
  const {element, body} = table(caption, kBarColumns);
  element.classList.add("bars");
  const most = list.reduce((size, one) => Math.max(size, one.size || 0), 0);
  list.sort((a, b) => byName(a.name, b.name));
  parent.append(element);
  inPieces(body, list, one =>
    row(kBarColumns, [one.name, bar(one.size / most), one.count, one.share]), parent);
}

function histogramBars(value) {
  return Object.entries(value).filter(([name]) => name.startsWith("[")).map(([name, text]) => {
    const [number, share] = String(text).split(/,\s*/);
    return {name, size: Number(number), count: number, share: share || ""};
  });
}

function distributionBars(value) {
  return Object.entries(value).filter(([name]) => name !== "__sum__" && name !== "__key_count__")
    .map(([name, text]) => {
      const form = /^count=(.*), proportion=(.*)$/;
      const [, number, share] = form.exec(text) || ["", String(text), ""];
      return {name, size: Number(number), count: number, share};
    });
}

function histogram(name, value, isOpen) {
  const facts = `${count(value.count, "sample")}, min ${value.min}, mean ` +
    `${Number(Number(value["sum/count"]).toPrecision(6))}, max ${value.max}, sum ${value.sum}`;
  return foldable(named(name, make("span", {class: "value"}, facts)),
    body => addBars(body, `Samples of ${name}`, histogramBars(value)), isOpen);
}

function distribution(name, value, isOpen) {
  const facts = `${scalarText(value.__sum__)} in ${count(value.__key_count__, "key")}`;
  return foldable(named(name, make("span", {class: "value"}, facts)),
    body => addBars(body, `Counts of ${name}`, distributionBars(value)), isOpen);
}

function times(name, value) {
  const list = listOf(value.timestamps);
  const text = value.minutes === 0 ? "less than 1 s" : secondsText(value.minutes * 60);
  if (list.length < 2) return leaf(name, make("span", {class: "value"}, text));
  const facts = `${text}, ${list[0]} to ${list[list.length - 1]}`;
  if (list.length === 2) return leaf(name, make("span", {class: "value"}, facts));
  const summary = make("span", {class: "value"}, `${facts}, ${count(list.length, "time")}`);
  return foldable(named(name, summary), body => {
    const items = make("ol", {});
    body.append(items);
    inPieces(items, list, time => make("li", {}, scalarText(time)), body);
  });
}

function progress(name, value, isOpen) {
  const children = listOf(value.childdreProgress);
  const done = [bar(value.progressPercent / 100),
                make("span", {class: "value"}, `${value.progressPercent}\u202f%`)];
  if (children.length === 0) return leaf(name, ...done);
  return foldable(named(name, ...done), body =>
    inPieces(body, children.map((child, i) => [String(i), child]), ([key, child]) =>
      isProgress(child) ? progress(key, child, isOpen) : treeOf(key, child), body), isOpen);
}

function percent(name, text) {
  const [, done, total, share] = /^(-?\d+)\/(\d+);(.*)%$/.exec(text);
  return leaf(name, bar(Number(done) / Number(total)),
              make("span", {class: "value"}, `${done} of ${total} (${share}\u202f%)`));
}

function container(name, value, isOpen) {
  const size = value.length === 0 ? "empty" : count(value.length, "entry", "entries");
  if (value.length === 0) return leaf(name, make("span", {class: "note"}, size));
  return foldable(named(name, make("span", {class: "note"}, size)), body => {
    const list = make("div", {});
    body.append(list);
    inPieces(list, value, entry => statistic(...Object.entries(entry)[0], isOpen), body);
  }, isOpen);
}

// Returns the element of a statistic, whose kind its form tells.
function statistic(name, value, isOpen) {
  if (isContainer(value)) return container(name, value, isOpen);
  if (isHistogram(value)) return histogram(name, value, isOpen);
  if (isDistribution(value)) return distribution(name, value, isOpen);
  if (isTimes(value)) return times(name, value);
  if (isProgress(value)) return progress(name, value, isOpen);
  if (isRejections(value)) return leaf(name, make("a", {href: "#why"}, "rejections"));
  if (typeof value === "string" && /^-?\d+\/\d+;.*%$/.test(value)) return percent(name, value);
  if (value === null) return leaf(name, make("span", {class: "note"}, "empty"));
  const axes = axesOf(value);
  return axes ? records(name, value, axes, isOpen) : treeOf(name, value);
}

// Calls `visit` with the path, name and value of every statistic in document order until it returns
// false.
function visitStatistics(value, visit, path = []) {
  if (!isObject(value)) return true;
  for (const [name, member] of Object.entries(value)) {
    if (visit(path, name, member) === false) return false;
    if (!isContainer(member)) continue;
    for (const entry of member) {
      if (!visitStatistics(entry, visit, [...path, name])) return false;
    }
  }
  return true;
}

// Returns elements of the statistics whose name contains a text, at most 100.
function foundStatistics(text) {
  const found = [];
  visitStatistics(statistics, (path, name, value) => {
    if (!isContainer(value) && name.toLowerCase().includes(text)) {
      found.push(make("div", {}, make("p", {class: "about"}, path.join(" / ")),
                      statistic(name, value, false)));
    }
    return found.length < 100;
  });
  if (found.length === 0) return [note("No statistic has this name.")];
  return found.length < 100 ? found : [note("The first 100:"), ...found];
}

function showStatistics() {
  let number = 0;
  visitStatistics(statistics, (path, name, value) => {
    if (!isContainer(value)) ++number;
  });
  const element = section("statistics_tree", "Statistics", number > 0 ? grouped(number) : "");
  if (!isObject(statistics)) {
    element.append(note(statistics === undefined ? "The statistics are not readable."
                                                 : "The run has written no statistics."));
    return;
  }
  const tree = make("div", {class: "tree"});
  const found = make("div", {class: "tree", role: "status"});
  const isFew = number <= kFewEntries;
  tree.append(...Object.entries(statistics).map(([name, value]) =>
    statistic(name, value, isFew)));
  if (!isFew && tree.firstChild) tree.firstChild.open = true;
  if (number > 10) {
    element.append(make("div", {class: "fields"}, searchField("Find a statistic", text => {
      tree.hidden = text !== "";
      found.replaceChildren(...(text === "" ? [] : foundStatistics(text)));
    })));
  }
  element.append(found, tree);
}
