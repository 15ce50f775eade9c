(() => {
  "use strict";

  // A link to what is folded unfolds it.
  const unfold = () => {
    const target = location.hash.length > 1 && document.getElementById(decodeURIComponent(location.hash.slice(1)));
    if (!target) return;
    for (let at = target; at; at = at.parentElement) if (at.tagName === "DETAILS") at.open = true;
    target.scrollIntoView();
    target.focus({ preventScroll: true });
  };
  addEventListener("hashchange", unfold);
  unfold();

  // What isn't long is printed unfolded.
  let folded = [];
  addEventListener("beforeprint", () => {
    folded = [...document.querySelectorAll("details:not(.long):not([open])")];
    for (const one of folded) one.open = true;
  });
  addEventListener("afterprint", () => {
    for (const one of folded) one.open = false;
  });

  // A row is shown if all controls of the form take it. Pages without such a row are hidden.
  const tests = {
    severity: (row, form) => form.querySelector(`[data-by=severity][value=${row.dataset.severity}]`).checked,
    file: (row, form, wanted) => !wanted || row.dataset.file === wanted,
    text: (row, form, wanted) => !wanted || row.textContent.toLowerCase().includes(wanted),
    first: (row, form, wanted) => !wanted || row.cells[0].textContent.trim() === wanted,
  };
  for (const form of document.querySelectorAll("form[data-filter]")) {
    const list = document.getElementById(form.dataset.filter);
    const rows = [...list.querySelectorAll("tbody tr")];
    const pages = [...list.querySelectorAll("details")];
    let openBefore = null;
    const controls = [...form.querySelectorAll("[data-by]")];
    const by = [...new Set(controls.map((control) => control.dataset.by))];
    const output = form.querySelector("output");
    const values = () => Object.fromEntries(controls.map((c) => [c.dataset.by, c.value.trim().toLowerCase()]));
    const apply = () => {
      const wanted = values();
      let shown = 0;
      for (const row of rows) {
        row.hidden = !by.every((name) => tests[name](row, form, wanted[name]));
        if (!row.hidden) shown += 1;
      }
      const isNarrow = Boolean(wanted.text || wanted.first || wanted.file);
      if (isNarrow && !openBefore) openBefore = pages.map((page) => page.open);
      pages.forEach((page, place) => {
        page.hidden = !page.querySelector("tbody tr:not([hidden])");
        if (isNarrow) page.open = !page.hidden && shown <= 1000;
        else if (openBefore) page.open = openBefore[place];
      });
      if (!isNarrow) openBefore = null;
      output.textContent = shown === rows.length ? "" :
        form.dataset.counted.replace("##", rows.length).replace("#", shown);
    };
    let waiting = 0;
    form.addEventListener("input", () => {
      clearTimeout(waiting);
      if (rows.length > 5000) waiting = setTimeout(apply, 250);
      else apply();
    });
    form.addEventListener("submit", (event) => event.preventDefault());
    form.hidden = false;
  }
})();
