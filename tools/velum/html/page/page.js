"use strict";
(() => {
  const at = id => document.getElementById(id);
  const root = document.documentElement;

  // Dark or light: as the system says, until someone chooses.
  const remembered = (value) => {
    try { // files have no storage in some browsers
      if (value) localStorage.setItem("velum-theme", value);
      return localStorage.getItem("velum-theme");
    } catch { return value; }
  };
  const isDark = () => root.dataset.theme
    ? root.dataset.theme === "dark" : matchMedia("(prefers-color-scheme: dark)").matches;
  const chosen = remembered();
  if (chosen === "dark" || chosen === "light") root.dataset.theme = chosen;
  at("theme").hidden = false;
  at("theme").addEventListener("click", () => {
    root.dataset.theme = isDark() ? "light" : "dark";
    remembered(root.dataset.theme);
  });

  // Search. Every word must be in the name, the path, the class or the unit of an object.
  const query = at("query"), hits = at("hits"), found = at("found"), tree = at("tree");
  const mostHits = 200;
  let index;
  const makeIndex = () => {
    let place = "", owner = "";
    index = [];
    const add = (id, name, place, kind, unit) => index.push({
      id, name, place, kind, unit, plain: name.toLowerCase(),
      all: `${place}/${name}\n${kind}\n${unit}`.toLowerCase()});
    for (const part of document.querySelectorAll("h3, section[data-c], tr[id]")) {
      if (part.tagName === "H3") {
        place = part.dataset.none === undefined ? part.textContent : "";
      } else if (part.tagName === "TR") { // a property of the class above
        add(part.id, part.cells[0].textContent, owner, "property", "");
      } else {
        owner = part.querySelector("h4").firstChild.textContent; // "h4 a" takes milliseconds in a long page
        add(part.id, owner, place, part.dataset.c, part.dataset.u || "");
      }
    }
  };
  const fits = (entry, words) => words.every(word =>
    word.startsWith("class:") ? entry.kind.toLowerCase().startsWith(word.slice(6))
      : word.startsWith("unit:") ? entry.unit.toLowerCase().startsWith(word.slice(5))
      : entry.all.includes(word));
  const rank = (entry, word) => {
    const text = word.startsWith("class:") ? entry.kind.toLowerCase()
      : word.startsWith("unit:") ? entry.unit.toLowerCase() : entry.plain;
    const wanted = word.replace(/^(class|unit):/, "");
    return text === wanted ? 0 : text.startsWith(wanted) ? 1 : 2;
  };
  const itemOf = entry => {
    const item = document.createElement("li"), link = document.createElement("a");
    const small = document.createElement("small");
    link.href = "#" + entry.id;
    link.textContent = entry.name;
    small.textContent = entry.kind + (entry.unit ? ", " + entry.unit : "") +
      (entry.place ? " \u2014 " + entry.place : "");
    item.append(link, small);
    return item;
  };
  const search = () => {
    const words = query.value.toLowerCase().split(/\s+/).filter(Boolean);
    tree.hidden = words.length > 0;
    hits.replaceChildren();
    found.textContent = "";
    if (!words.length) return;
    if (!index) makeIndex();
    const all = index.filter(entry => fits(entry, words));
    for (const entry of all) entry.rank = rank(entry, words[0]);
    all.sort((a, b) => a.rank - b.rank);
    hits.append(...all.slice(0, mostHits).map(itemOf));
    found.textContent = `${all.length} found` +
      (all.length > mostHits ? `, the first ${mostHits} are listed` : "");
  };
  at("search").hidden = false;
  query.addEventListener("input", search);
  const step = (from, by) => {
    const links = [...hits.querySelectorAll("a")];
    const next = links.indexOf(from) + by;
    (next < 0 ? query : links[Math.min(next, links.length - 1)] || query).focus();
  };
  at("search").addEventListener("keydown", event => {
    if (event.key === "ArrowDown" || event.key === "ArrowUp") {
      step(document.activeElement, event.key === "ArrowDown" ? 1 : -1);
      event.preventDefault();
    } else if (event.key === "Enter" && event.target === query) {
      const first = hits.querySelector("a");
      if (first) first.click();
    } else if (event.key === "Escape") {
      query.value = "";
      search();
      query.focus();
    }
  });
  document.addEventListener("keydown", event => {
    const isTyping = /^(INPUT|SELECT|TEXTAREA)$/.test(event.target.tagName);
    if (event.key === "/" && !isTyping && !event.ctrlKey && !event.metaKey) {
      query.focus();
      event.preventDefault();
    }
  });

  // A link may name the path of an object: #/A/B.
  const follow = () => {
    let hash = location.hash.slice(1);
    try { hash = decodeURIComponent(hash); } catch { /* a stray %: as it stands */ }
    if (!hash.startsWith("/")) return;
    if (!index) makeIndex();
    const entry = index.find(each => `${each.place}/${each.name}` === hash);
    if (entry) location.replace("#" + entry.id);
  };
  addEventListener("hashchange", follow);
  follow();

  // Findings by severity and rule.
  const filter = at("filter");
  if (filter) {
    const rows = [...at("list").tBodies[0].rows];
    const apply = () => {
      const severity = at("severity").value, rule = at("rule").value;
      let count = 0;
      for (const row of rows) {
        const isKept = (!severity || row.dataset.s === severity) && (!rule || row.dataset.r === rule);
        row.hidden = !isKept;
        count += isKept;
      }
      at("kept").textContent = `${count} of ${rows.length}`;
    };
    filter.hidden = false;
    filter.addEventListener("change", apply);
    filter.addEventListener("submit", event => event.preventDefault());
    apply();
  }

  // Paper can't be pressed: what is closed is opened for it.
  let closed = [];
  addEventListener("beforeprint", () => {
    closed = [...document.querySelectorAll("main details:not([open])")];
    for (const each of closed) each.open = true;
  });
  addEventListener("afterprint", () => { for (const each of closed) each.open = false; });

  // Tables of values: what is under the pointer is marked in the picture and among the numbers.
  const numbers = text => text.trim().split(" ").map(Number);
  const nearest = (places, x) => places.reduce(
    (best, place, i) => Math.abs(place - x) < Math.abs(places[best] - x) ? i : best, 0);
  // A map says where its cells begin and end, and how many there are; a curve where its points are.
  const gridOf = svg => {
    const [left, right, columns] = numbers(svg.dataset.x), [top, bottom, rows] = numbers(svg.dataset.y);
    return {left, bottom, columns, rows, wide: (right - left) / columns, high: (bottom - top) / rows};
  };
  const cellAt = (svg, event) => {
    const box = svg.getBoundingClientRect(), scale = svg.viewBox.baseVal.width / box.width;
    const x = (event.clientX - box.left) * scale, y = (event.clientY - box.top) * scale;
    if (svg.dataset.kind === "curve") return [nearest(numbers(svg.dataset.x), x), 0];
    const grid = gridOf(svg);
    const column = Math.floor((x - grid.left) / grid.wide), row = Math.floor((grid.bottom - y) / grid.high);
    return column >= 0 && column < grid.columns && row >= 0 && row < grid.rows ? [column, row] : null;
  };
  const markIn = (svg, [column, row]) => {
    const mark = document.createElementNS("http://www.w3.org/2000/svg", "path");
    let d;
    // The table of another release may be smaller.
    if (svg.dataset.kind === "curve") {
      const places = numbers(svg.dataset.x), [top, bottom] = numbers(svg.dataset.y);
      if (column >= places.length) return;
      d = `M${places[column]} ${top}V${bottom}`;
    } else {
      const grid = gridOf(svg);
      if (column >= grid.columns || row >= grid.rows) return;
      d = `M${grid.left + column * grid.wide} ${grid.bottom - row * grid.high}` +
        `v${-grid.high}h${grid.wide}v${grid.high}z`;
    }
    mark.setAttribute("class", "hot");
    mark.setAttribute("d", d);
    svg.append(mark);
  };
  const clear = figure => {
    for (const mark of figure.querySelectorAll("path.hot")) mark.remove();
    for (const cell of figure.querySelectorAll("td.hot")) cell.classList.remove("hot");
    figure.querySelector(".at").textContent = "\u00a0";
  };
  // What a cell was and is, if it changed.
  const textOf = cell => cell.children.length > 1
    ? [...cell.children].map(each => each.textContent).join(" \u2192 ") : cell.textContent;
  const show = (figure, place) => {
    clear(figure);
    const table = figure.querySelector("table.num"), body = table.tBodies[0].rows;
    const pictures = figure.querySelectorAll("svg[data-kind]");
    const isCurve = pictures[0].dataset.kind === "curve";
    const [column, row] = place;
    const line = isCurve ? body[column] : body[body.length - 1 - row];
    const cell = line && line.cells[isCurve ? 1 : column + 1];
    if (!cell) return;
    cell.classList.add("hot");
    pictures.forEach(svg => markIn(svg, place));
    const {a, b} = pictures[0].dataset, first = isCurve ? line.cells[0] : table.tHead.rows[0].cells[column + 1];
    figure.querySelector(".at").textContent = `${a} ${textOf(first)}` +
      (isCurve ? "" : `, ${b} ${textOf(line.cells[0])}`) + `: ${textOf(cell)}`;
  };
  for (const figure of document.querySelectorAll("figure.lookup")) {
    figure.addEventListener("pointermove", event => {
      const svg = event.target.closest("svg[data-kind]"), cell = event.target.closest("td");
      if (svg) {
        const place = cellAt(svg, event);
        place ? show(figure, place) : clear(figure);
      } else if (cell && cell.closest("tbody")) {
        const isCurve = figure.querySelector("svg").dataset.kind === "curve";
        const line = cell.parentNode, last = line.parentNode.rows.length - 1;
        show(figure, isCurve ? [line.sectionRowIndex, 0]
          : [cell.cellIndex - 1, last - line.sectionRowIndex]);
      }
    });
    figure.addEventListener("pointerleave", () => clear(figure));
  }
})();
