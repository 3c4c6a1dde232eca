// The timeline of the steps. The table of steps has the same facts.

const kLane = 26;
const kMostLanes = 12;
const kNarrow = 0.003;  // of the width; narrower steps are drawn together

// Returns the bars between two times. Neighbours that would be too narrow are one bar.
function barsBetween(from, to) {
  const lanes = [];
  for (const step of steps) {
    if (step.depth >= kMostLanes) continue;
    const begin = Math.max(from, step.at);
    const end = step.state === "running" ? to : Math.min(to, step.at + step.span);
    if (end < from || begin > to || end < begin) continue;
    const lane = lanes[step.depth] || (lanes[step.depth] = []);
    const narrow = (to - from) * kNarrow;
    const last = lane[lane.length - 1];
    const joins = last && end - begin < narrow && last.isNarrow && begin - last.end < narrow;
    if (joins) {
      last.end = Math.max(last.end, end);
      last.steps.push(step);
    } else {
      lane.push({begin, end, steps: [step], isNarrow: end - begin < narrow});
    }
  }
  return lanes;
}

function ticksBetween(from, to) {
  const rough = (to - from) / (innerWidth < 600 ? 3 : 6);
  const power = 10 ** Math.floor(Math.log10(rough));
  const step = [1, 2, 5, 10].map(factor => factor * power).find(size => size >= rough);
  const ticks = [];
  for (let i = Math.ceil(from / step); i * step <= to; ++i) ticks.push(i * step);
  return ticks;
}

function barElement(one, lane, isOdd, from, to, zoom) {
  const step = one.steps[0];
  const isMany = one.steps.length > 1;
  const x = (one.begin - from) / (to - from);
  const width = Math.max(kNarrow, (one.end - one.begin) / (to - from));
  const state = one.steps.some(each => each.state === "failed") ? "failed" :
    one.steps.some(each => each.state === "running") ? "running" :
    isMany ? "many" : isOdd ? "odd" : "even";
  const short = step.name.split("/").pop();
  const text = isMany ? count(one.steps.length, "step") : short;
  const about = isMany ? `${text}, from ${step.name}` :
    `${step.name}: ${secondsText(step.span)}, ${percentText(step.span / runSeconds || 0)}`;
  const label = width < 0.02 ? [] :
    [svg("text", {x: 5, y: 16}, visible((state === "failed" ? "✗ " : "") + text))];
  const element = svg("svg",
    {class: "step " + state, x: `${x * 100}%`, y: lane * kLane + 22, width: `${width * 100}%`,
     height: kLane - 3},
    svg("title", {}, visible(about)), svg("rect", {width: "100%", height: "100%", rx: 2}),
    ...label);
  element.addEventListener("click", () => {
    if (isMany) zoom(one.begin, one.end);
    else if (step.hasSteps && one.end - one.begin < (to - from) * 0.999) zoom(step.at, one.end);
    else showStep(step.index);
  });
  return element;
}

let zoomTo = () => {};

function showTimeline() {
  const element = section("timeline", "Timeline");
  const last = steps.reduce((most, step) => Math.max(most, step.at + step.span), 0);
  // Leaves room for the steps without an end, of which the last has only begun.
  const total = steps.some(step => step.state === "running") ? last * 1.05 : last;
  if (!(total > 0)) {
    element.append(note("No times of steps are recorded."));
    return;
  }
  const place = make("div", {class: "timeline"});
  const whole = button("Whole run", () => zoomTo(0, total));
  const range = make("span", {role: "status"});
  zoomTo = (from, to) => {
    if (!(to > from)) return;
    const lanes = barsBetween(from, to);
    const percent = time => `${(time - from) / (to - from) * 100}%`;
    const height = lanes.length * kLane + 26;
    const chart = svg("svg", {width: "100%", height, role: "img",
      "aria-label": `Timeline of ${count(steps.length, "step")}; the table of steps lists them`});
    for (const time of ticksBetween(from, to)) {
      const isLast = (time - from) / (to - from) > 0.9;
      chart.append(svg("line", {x1: percent(time), x2: percent(time), y1: 0, y2: height}),
        svg("text", {class: isLast ? "tick last" : "tick", x: percent(time), dx: isLast ? -4 : 4,
                     y: 13}, secondsText(Number(time.toPrecision(6)))));
    }
    lanes.forEach((lane, i) => lane.forEach((one, j) =>
      chart.append(barElement(one, i, j % 2 === 1, from, to, zoomTo))));
    place.replaceChildren(chart);
    const isWhole = from === 0 && to === total;
    whole.hidden = isWhole;
    range.textContent = isWhole ? "" : `${secondsText(from)} to ${secondsText(to)}`;
  };
  element.append(place, make("p", {class: "pieces"}, whole, range));
  if (steps.some(step => step.depth >= kMostLanes)) {
    element.append(note(`Steps deeper than ${kMostLanes} chains are only in the table.`));
  }
  zoomTo(0, total);
}
