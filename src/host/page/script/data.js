// The data of the run, as the page contains it. All text of it is set as text, never as HTML.

"use strict";

// Returns the value of JSON text. Integers that a number cannot hold become BigInt.
function parse(json) {
  if (!/[:,[]-?\d{16,}[,\]}]/.test(json)) return JSON.parse(json);
  return JSON.parse(json, (key, value, context) =>
    typeof value === "number" && context && /^-?\d{16,}$/.test(context.source) ?
      BigInt(context.source) : value);
}

// Returns the data with this id; undefined if it is not JSON.
function dataOf(id) {
  try {
    return parse(document.getElementById(id).textContent);
  } catch (error) {
    return undefined;
  }
}

// Returns the events of the steps, without lines that are not JSON.
function events() {
  const whole = dataOf("steps");
  if (whole !== undefined) return whole;
  const lines = document.getElementById("steps").textContent.slice(1, -1).split(",\n");
  return lines.flatMap(line => {
    try {
      return [parse(line)];
    } catch (error) {
      return [];
    }
  });
}

// Returns the steps in the order in which they began, without the pipeline as a whole, whose name
// is empty. A step without an end has the state "running"; its "span" lasts until the last event.
function stepsOf(list) {
  const steps = [];
  const open = [];
  for (const event of list) {
    if (!isObject(event) || event.step === "") continue;
    if (event.event === "begin") {
      const step = {index: steps.length, name: String(event.step), class: event.class,
                    place: event.place, before: event.before, at: Number(event.at) || 0,
                    depth: open.length, hasSteps: false, state: "running"};
      if (open.length > 0) open[open.length - 1].hasSteps = true;
      steps.push(step);
      open.push(step);
    } else {
      let at = open.length - 1;
      while (at >= 0 && open[at].name !== event.step) --at;
      if (at < 0) continue;
      const step = open[at];
      open.length = at;
      step.state = event.event === "failed" ? "failed" : "ended";
      step.after = event.after;
      for (const key of ["wall", "cpu", "memory"]) {
        if (typeof event[key] === "number") step[key] = event[key];
      }
    }
  }
  const last = list.reduce((most, event) => Math.max(most, Number(event && event.at) || 0), 0);
  for (const step of steps) step.span = step.wall ?? Math.max(0, last - step.at);
  return steps;
}

const run = dataOf("run") || {outcome: "run.json is not readable"};
const links = dataOf("links") || {own: [], files: []};
const pictures = dataOf("pictures") || [];
const statistics = dataOf("statistics");
const stepEvents = events();
const steps = stepsOf(stepEvents);
const runSeconds = secondsOfRun();

function secondsOfRun() {
  if (typeof run.wall === "number") return run.wall;
  return steps.reduce((most, step) => Math.max(most, step.at + step.span), 0);
}

function isObject(value) {
  return value !== null && typeof value === "object" && !Array.isArray(value);
}

function listOf(value) {
  return Array.isArray(value) ? value : [];
}
