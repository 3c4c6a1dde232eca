// Values as text for readers.

// Returns text in which control characters, and those that reorder the text, are visible.
function visible(text) {
  const hidden = /[\u0000-\u0008\u000b-\u001f\u007f-\u009f\u202a-\u202e\u2066-\u2069]/g;
  return String(text).replace(hidden, c => "\\u" + c.charCodeAt(0).toString(16).padStart(4, "0"));
}

function count(number, noun, nouns = noun + "s") {
  return `${grouped(number)} ${number === 1 ? noun : nouns}`;
}

function grouped(number) {
  return String(number).replace(/\B(?=(\d{3})+$)/g, "\u202f");
}

function secondsText(seconds) {
  if (typeof seconds !== "number") return "";
  if (seconds === 0) return "0 s";
  if (seconds < 0.001) return `${Number((seconds * 1e6).toPrecision(3))} µs`;
  if (seconds < 1) return `${Number((seconds * 1000).toPrecision(3))} ms`;
  if (seconds < 60) return `${Number(seconds.toPrecision(3))} s`;
  const whole = Math.round(seconds);
  const two = number => String(number).padStart(2, "0");
  if (whole < 3600) return `${Math.floor(whole / 60)} min ${two(whole % 60)} s`;
  return `${grouped(Math.floor(whole / 3600))} h ${two(Math.floor(whole / 60) % 60)} min`;
}

function bytesText(bytes) {
  if (typeof bytes !== "number") return "";
  let unit = 0;
  while (bytes >= 1000 && unit < 4) {
    bytes /= 1000;
    ++unit;
  }
  return `${Number(bytes.toPrecision(3))} ${["bytes", "kB", "MB", "GB", "TB"][unit]}`;
}

function percentText(share) {
  if (share > 0 && share < 0.0005) return "<\u202f0.1\u202f%";
  return `${Number((share * 100).toFixed(share < 0.1 ? 1 : 0))}\u202f%`;
}

function timeText(time) {
  return String(time).replace("T", " ").replace(/(\.\d{3})\d*Z$/, "$1 UTC").replace(/Z$/, " UTC");
}

function scalarText(value) {
  return typeof value === "string" ? value : String(value);
}

const natural = new Intl.Collator("en", {numeric: true});

// Compares names; numbers, also of ranges such as "[10-20)", by their value.
function byName(left, right) {
  const numbers = [left, right].map(name => {
    const range = /^\[(\d+)-\d+\)$/.exec(name);
    return name.trim() === "" ? NaN : Number(range ? range[1] : name);
  });
  if (numbers[0] < numbers[1]) return -1;
  if (numbers[0] > numbers[1]) return 1;
  return natural.compare(left, right);
}
