// Reads an IFC file with web-ifc and prints, as JSON, the property-set templates it finds: what a
// BIM tool that loads the library would see. The test compares it with the documents exported.
// Usage: node read_ifc.js FILE.ifc
'use strict';
const fs = require('fs');
const WebIFC = require('web-ifc');

const text = (attribute) => (attribute == null ? null : attribute.value);

async function main() {
  const api = new WebIFC.IfcAPI();
  await api.Init();
  const model = api.OpenModel(new Uint8Array(fs.readFileSync(process.argv[2])));
  const ids = (type) => {
    const found = api.GetLineIDsWithType(model, type);
    return Array.from({ length: found.size() }, (_, i) => found.get(i));
  };
  const read = {
    schema: api.GetModelSchema(model),
    projects: ids(WebIFC.IFCPROJECT).map((id) => text(api.GetLine(model, id).Name)),
    libraries: ids(WebIFC.IFCPROJECTLIBRARY).map((id) => text(api.GetLine(model, id).Name)),
    declared: ids(WebIFC.IFCRELDECLARES).reduce((n, id) => n + api.GetLine(model, id).RelatedDefinitions.length, 0),
    globalIds: [],
    sets: [],
  };
  for (const id of ids(WebIFC.IFCPROPERTYSETTEMPLATE)) {
    const set = api.GetLine(model, id, true);
    read.globalIds.push(text(set.GlobalId));
    read.sets.push({
      name: text(set.Name),
      description: text(set.Description),
      templateType: text(set.TemplateType),
      applicableEntity: text(set.ApplicableEntity),
      members: set.HasPropertyTemplates.map((member) => {
        read.globalIds.push(text(member.GlobalId));
        const enumeration = member.Enumerators;
        return {
          name: text(member.Name),
          description: text(member.Description),
          templateType: text(member.TemplateType),
          measure: text(member.PrimaryMeasureType),
          enumeration: enumeration == null ? null
            : { name: text(enumeration.Name), values: enumeration.EnumerationValues.map(text) },
        };
      }),
    });
  }
  api.CloseModel(model);
  process.stdout.write(JSON.stringify(read) + '\n');
}

main().catch((error) => {
  process.stderr.write(`read_ifc: ${error && error.stack ? error.stack : error}\n`);
  process.exit(2);
});
