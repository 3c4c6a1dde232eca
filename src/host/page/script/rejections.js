// The reasons for which subjects were not placed.

function rejectionsOf() {
  const list = [];
  visitStatistics(statistics, (path, name, value) => {
    if (!isRejections(value)) return;
    const {dropped, subjects} = value.__rejections__;
    const place = [...path, name].join(" / ");
    const earlier = list.filter(one => one.place === place).length;
    const number = earlier === 0 ? "" : ` (${earlier + 1})`;
    list.push({place, name: place + number, dropped, subjects});
  });
  return list;
}

const kReasonColumns = [["Count", "number"], ["Bar", "share"], ["Reason", "name"],
                        ["Nearest or example", "example"]];

function nearestText(reason) {
  if (reason.nearest !== undefined) {
    return `nearest: ${scalarText(reason.nearest)}, short by ${scalarText(reason.short_by)}`;
  }
  return reason.example === undefined ? "" : `for example ${scalarText(reason.example)}`;
}

function subjectElement(name, subject, isOpen) {
  const state = subject.placed ? "placed" : "not placed";
  const verdict = make("span", {class: "value"},
    `${state}; ${count(subject.examined || 0, "candidate")} examined`);
  const reasons = Object.entries(subject.reasons || {}).sort((a, b) =>
    (b[1].count - a[1].count) || natural.compare(a[0], b[0]));
  if (reasons.length === 0) return leaf(name, verdict);
  return foldable(named(name, verdict), body => {
    const {element, body: rows} = table(`Rejected candidates for ${name}`, kReasonColumns);
    element.classList.add("reasons");
    body.append(element);
    inPieces(rows, reasons, ([reason, facts]) =>
      row(kReasonColumns, [scalarText(facts.count), bar(facts.count / reasons[0][1].count), reason,
                           nearestText(facts)]), body);
  }, isOpen);
}

function showRejections(element, {name, dropped, subjects}, hasName) {
  const all = Object.entries(subjects || {}).filter(([, subject]) => isObject(subject))
    .sort((a, b) => (Boolean(a[1].placed) - Boolean(b[1].placed)) || natural.compare(a[0], b[0]));
  if (hasName) element.append(make("h3", {}, name));
  const missing = all.filter(([, subject]) => !subject.placed).length;
  element.append(make("p", {}, `${count(missing, "subject")} not placed, ` +
    `${grouped(all.length - missing)} placed.`));
  if (dropped) {
    element.append(note(`${count(dropped, "rejection")} of further subjects and reasons dropped, ` +
                        "as the statistic was full."));
  }
  const list = make("div", {class: "tree"});
  const below = make("div", {});
  const show = text => {
    const found = all.filter(([subject]) => subject.toLowerCase().includes(text));
    below.replaceChildren();
    if (found.length === 0) below.append(note("No subject has this name."));
    inPieces(list, found, ([subject, facts]) =>
      subjectElement(subject, facts, found.length <= 8), below);
  };
  if (all.length > 5) {
    element.append(make("div", {class: "fields"}, searchField("Find a subject", show)));
  }
  element.append(list, below);
  show("");
}

function showWhy() {
  const list = rejectionsOf();
  if (list.length === 0) return;
  const element = section("why", "Why not");
  for (const one of list) showRejections(element, one, list.length > 1);
}
